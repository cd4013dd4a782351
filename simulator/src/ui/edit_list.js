// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Keys with typed values that a person may change, remove and add: feature keys, settings.

import { html, useState } from '../view.js';
import { Button, IconButton, SearchField, Select } from './controls.js';

/** A field that takes effect when it is left or Enter is pressed, and goes back on Escape. */
function ValueField({ label, value, onCommit }) {
  const [text, setText] = useState(null);
  const commit = () => {
    if (text !== null && text !== value) {
      onCommit(text);
    }
    setText(null);
  };
  const onKeyDown = (event) => {
    if (event.key === 'Enter') {
      commit();
    } else if (event.key === 'Escape') {
      setText(null);
    }
  };
  return html`<input
    type="text"
    class="mono"
    aria-label=${label}
    spellcheck=${false}
    value=${text ?? value}
    onInput=${(event) => setText(event.target.value)}
    onBlur=${commit}
    onKeyDown=${onKeyDown}
  />`;
}

function Entry({ entry, onSet, onRemove }) {
  const label = `Value of ${entry.key}`;
  return html`<li class="edit-entry">
    <span class="edit-key mono">${entry.key}</span>
    <span class="edit-value">
      ${
        entry.type === 'bool'
          ? html`<${Select}
              label=${label}
              value=${entry.text}
              options=${[
                ['true', 'true'],
                ['false', 'false'],
              ]}
              onChange=${(text) => onSet({ ...entry, text })}
            />`
          : html`<${ValueField}
              label=${label}
              value=${entry.text}
              onCommit=${(text) => onSet({ ...entry, text })}
            />`
      }
      <span class="edit-type">${entry.type}</span>
      <${IconButton} icon="trash" label=${`Remove ${entry.key}`} onClick=${() => onRemove(entry)} />
    </span>
  </li>`;
}

function NewEntry({ types, keyHint, onSet }) {
  const [key, setKey] = useState('');
  const [type, setType] = useState(types[0]);
  const [text, setText] = useState('');
  const add = (event) => {
    event.preventDefault();
    onSet({ key: key.trim(), type, text });
    setKey('');
    setText('');
  };
  return html`<form class="edit-new" onSubmit=${add}>
    <input
      type="text"
      class="mono"
      aria-label="New key"
      placeholder=${keyHint}
      required
      spellcheck=${false}
      value=${key}
      onInput=${(event) => setKey(event.target.value)}
    />
    <span class="edit-value">
      <${Select}
        label="Type"
        value=${type}
        options=${types.map((each) => [each, each])}
        onChange=${setType}
      />
      <input
        type="text"
        class="mono"
        aria-label="New value"
        placeholder="value"
        spellcheck=${false}
        value=${text}
        onInput=${(event) => setText(event.target.value)}
      />
      <${Button} type="submit" icon="plus">Add<//>
    </span>
  </form>`;
}

/**
 * @param {{entries: {key: string, type: string, text: string}[], types: string[], label: string,
 *          keyHint: string, onSet: (entry: any) => void, onRemove: (entry: any) => void}} props
 */
export function EditList({ entries, types, label, keyHint, onSet, onRemove }) {
  const [filter, setFilter] = useState('');
  const shown = entries.filter(({ key }) => key.toLowerCase().includes(filter.toLowerCase()));
  return html`${
      entries.length > 6 &&
      html`<${SearchField} label=${`Filter ${label}`} value=${filter} onInput=${setFilter} />`
    }
    <ul class="edit-list" aria-label=${label}>
      ${shown.map(
        (entry) =>
          html`<${Entry} key=${entry.key} entry=${entry} onSet=${onSet} onRemove=${onRemove} />`
      )}
    </ul>
    ${shown.length === 0 && html`<p class="hint">${filter ? 'No key matches.' : 'None yet.'}</p>`}
    <${NewEntry} types=${types} keyHint=${keyHint} onSet=${onSet} />`;
}
