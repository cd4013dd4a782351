// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Every key that the set knows, by group, with a filter.

import { html, useState } from '../view.js';
import { set } from '../state/set.js';
import { SearchField } from '../ui/controls.js';
import { describeKey, groupKeys } from './key_table.js';
import { KeyButton } from './key_button.js';

function matches(key, text) {
  const { scriptName, label } = describeKey(key.name);
  const all = `${key.name} ${scriptName} ${label} ${key.keyCode}`.toLowerCase();
  return all.includes(text.trim().toLowerCase());
}

function Groups() {
  const [text, setText] = useState('');
  const keys = set.keys.value.filter((key) => matches(key, text));
  return html`<${SearchField} label="Name or code" value=${text} onInput=${setText} />
    ${keys.length === 0 && html`<p class="hint">No key has that name or code.</p>`}
    ${groupKeys(keys).map(
      ({ title, keys: inGroup }) =>
        html`<section key=${title}>
          <h4>${title}</h4>
          <div class="key-list">
            ${inGroup.map((each) => html`<${KeyButton} key=${each.name} name=${each.name} />`)}
          </div>
        </section>`
    )}`;
}

export function AllKeys() {
  const [open, setOpen] = useState(false);
  return html`<details class="all-keys" onToggle=${(event) => setOpen(event.target.open)}>
    <summary>All ${set.keys.value.length} keys</summary>
    ${open && html`<${Groups} />`}
  </details>`;
}
