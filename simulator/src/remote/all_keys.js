// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Every key that the set knows, by group, with a filter.

import { html, useLayoutEffect, useRef, useState } from '../view.js';
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
          <h3>${title}</h3>
          <div class="key-list">
            ${inGroup.map((each) => html`<${KeyButton} key=${each.name} name=${each.name} />`)}
          </div>
        </section>`
    )}`;
}

export function AllKeys() {
  const [open, setOpen] = useState(false);
  const details = useRef(null);
  useLayoutEffect(() => {
    if (open) {
      details.current.scrollIntoView({ block: 'start' }); // it opens below the edge otherwise
    }
  }, [open]);
  return html`<details
    class="all-keys"
    ref=${details}
    onToggle=${(event) => setOpen(event.target.open)}
  >
    <summary>All ${set.keys.value.length} keys</summary>
    ${open && html`<${Groups} />`}
  </details>`;
}
