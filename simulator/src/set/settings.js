// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The set's settings, as every process of it reads them.

import { html } from '../view.js';
import { ask } from '../api/session.js';
import { set } from '../state/set.js';
import { EditList } from '../ui/edit_list.js';
import { Section } from '../ui/section.js';

const types = ['string', 'int', 'bool', 'double'];

/** A person's text as a value of the type; one that is none goes as it is, and is refused. */
function valueOf(type, text) {
  if (type === 'bool') {
    return text === 'true';
  }
  const number = Number(text);
  return type === 'string' || text.trim() === '' || Number.isNaN(number) ? text : number;
}

export function Settings() {
  const settings = set.settings.value ?? [];
  const entries = settings.map(({ key, type, value }) => ({
    key,
    type,
    text: String(value ?? ''),
  }));
  return html`<${Section} name="settings" title="Settings" note=${settings.length}>
    <${EditList}
      label="settings"
      keyHint="db/… or memory/…"
      entries=${entries}
      types=${types}
      onSet=${({ key, type, text }) =>
        ask('settings.set', { key, type, value: valueOf(type, text) })}
      onRemove=${({ key }) => ask('settings.unset', { key })}
    />
  <//>`;
}
