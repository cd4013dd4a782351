// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Platform functions that are to fail.

import { html, useState } from '../view.js';
import { ask } from '../api/session.js';
import { set } from '../state/set.js';
import { Button, Chip, IconButton, Segments } from '../ui/controls.js';
import { Section } from '../ui/section.js';

const modes = [
  ['always', 'Always'],
  ['once', 'Once'],
];

function Fault({ fault }) {
  return html`<li class="fault">
    <span class="mono wrap">${fault.function}</span>
    <${Chip} tone="warn">${fault.mode} ${fault.code}<//>
    ${fault.hits > 0 && html`<span class="muted">${fault.hits}×</span>`}
    <${IconButton}
      icon="close"
      label=${`Let ${fault.function} work again`}
      onClick=${() => ask('faults.clear', { function: fault.function })}
    />
  </li>`;
}

/** Everything that can be made to fail, as far as its name has `text` in it; one can be chosen. */
function Functions({ text, chosen, onChoose }) {
  const groups = [
    ['Functions of the platform', set.functions.value ?? []],
    ['Files and other accesses', set.accesses.value ?? []],
  ].map(([title, names]) => [title, names.filter((name) => name.includes(text.trim()))]);
  return html`<select
    class="mono fault-names"
    size="7"
    aria-label="What can be made to fail"
    value=${chosen}
    onChange=${(event) => onChoose(event.target.value)}
  >
    ${groups.map(
      ([title, names]) =>
        names.length > 0 &&
        html`<optgroup key=${title} label=${title}>
          ${names.map((name) => html`<option key=${name} value=${name}>${name}</option>`)}
        </optgroup>`
    )}
  </select>`;
}

function NewFault() {
  const [name, setName] = useState('');
  const [filter, setFilter] = useState('');
  const [code, setCode] = useState('-1');
  const [mode, setMode] = useState('always');
  const add = async (event) => {
    event.preventDefault();
    const wanted = { function: name.trim(), code: Number(code), mode };
    if ((await ask('faults.set', wanted)) !== undefined) {
      setName('');
      setFilter('');
    }
  };
  return html`<form class="fault-new" onSubmit=${add}>
    <input
      type="text"
      class="mono"
      aria-label="Function to fail"
      placeholder="name, or choose one below"
      required
      spellcheck=${false}
      autocomplete="off"
      value=${name}
      onInput=${(event) => {
        setName(event.target.value);
        setFilter(event.target.value);
      }}
    />
    <${Functions} text=${filter} chosen=${name} onChoose=${setName} />
    <span class="button-row">
      <label class="inline-label"
        >Code
        <input
          type="number"
          class="mono"
          required
          value=${code}
          onInput=${(event) => setCode(event.target.value)}
        />
      </label>
      <${Segments} label="How often" value=${mode} options=${modes} onChange=${setMode} />
      <${Button} type="submit">Let it fail<//>
    </span>
  </form>`;
}

export function Faults() {
  const faults = set.faults.value ?? [];
  return html`<${Section} name="faults" title="Faults" note=${faults.length || ''}>
    <ul class="faults">
      ${faults.map((each) => html`<${Fault} key=${each.function} fault=${each} />`)}
    </ul>
    ${
      faults.length > 1 &&
      html`<${Button} onClick=${() => ask('faults.clear', { function: null })}>Clear all<//>`
    }
    <${NewFault} />
  <//>`;
}
