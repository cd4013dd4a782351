// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Where the last keys went, and why.

import { html } from '../view.js';
import { describeKey } from './key_table.js';
import { keyHistory } from '../state/streams.js';
import { isForVolume } from '../screen/volume.js';
import { Chip, IconButton } from '../ui/controls.js';

const reasons = {
  mandatory: 'mandatory',
  registered: 'registered',
  specialGrab: 'special grab',
  notRegistered: 'not registered',
  grabbedByOther: 'grabbed by another',
  noPrivilege: 'privilege missing',
  noFocus: 'nobody has the focus',
};

function reasonText(reason) {
  return reasons[reason] ?? reason ?? '';
}

/** Where the key went, in a sentence. */
export function whyText(entry) {
  return isForVolume(entry) ? `${entry.text}; the set changes its volume` : entry.text;
}

export function KeyOutcome({ entry }) {
  if (isForVolume(entry)) {
    return html`<${Chip}>the set's own<//>`;
  }
  return html`<${Chip} tone=${entry.delivered ? 'good' : 'warn'}>${reasonText(entry.reason)}<//>`;
}

function Press({ entry }) {
  const { label } = describeKey(entry.key_name);
  return html`<li class="press">
    <span class="press-line">
      <strong>${label}</strong>
      <span class="muted mono">${entry.key_code}</span>
      ${entry.long && html`<span class="muted">long</span>`}
      ${entry.injected && html`<span class="muted">injected</span>`}
      <${KeyOutcome} entry=${entry} />
    </span>
    <span class="press-why">${whyText(entry)}</span>
  </li>`;
}

export function KeyHistory() {
  const entries = keyHistory.value;
  return html`<section class="key-history" aria-labelledby="key-history-title">
    <header class="section-head">
      <h3 id="key-history-title">Where keys went</h3>
      ${
        entries.length > 0 &&
        html`<${IconButton}
          icon="trash"
          label="Clear the history of keys"
          onClick=${() => (keyHistory.value = [])}
        />`
      }
    </header>
    ${
      entries.length === 0
        ? html`<p class="hint">Press a key: here it says where it went, and why.</p>`
        : html`<ol class="presses" tabindex="0" aria-label="Pressed keys, the newest first">
            ${entries.map((entry) => html`<${Press} key=${entry.number} entry=${entry} />`)}
          </ol>`
    }
  </section>`;
}
