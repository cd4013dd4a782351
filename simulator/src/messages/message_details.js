// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// One message in full.

import { html } from '../view.js';
import { toast } from '../state/toasts.js';
import { Chip, IconButton } from '../ui/controls.js';
import { bytes, clockTime, duration } from '../ui/format.js';
import { JsonView } from '../ui/json_view.js';
import { Facts } from '../ui/section.js';
import { failed, kindText, nameOf } from './describe.js';

async function copy(text) {
  try {
    await navigator.clipboard.writeText(text);
    toast('Copied.');
  } catch {
    toast('The browser did not allow copying; select the text instead.', 'error');
  }
}

function Payload({ title, text }) {
  if (text === undefined || text === null) {
    return null;
  }
  return html`<section>
    <header class="section-head">
      <h4>${title} <span class="muted">${bytes(text.length)}</span></h4>
      <${IconButton}
        icon="copy"
        label=${`Copy the ${title.toLowerCase()}`}
        onClick=${() => copy(text)}
      />
    </header>
    <${JsonView} text=${text} label=${title} />
  </section>`;
}

export function MessageDetails({ record, onClose }) {
  const { direction, kind, peer, context, time_ns: time, us, error, payload, reply } = record;
  return html`<aside class="message-details" aria-label="Selected message">
    <header class="section-head">
      <h3>${nameOf(record)} ${failed(record) && html`<${Chip} tone="bad">failed<//>`}</h3>
      <${IconButton} icon="close" label="Close the message" onClick=${onClose} />
    </header>
    <${Facts}
      entries=${[
        ['Kind', `${kindText(kind)}, ${direction === 'fromPage' ? 'from' : 'to'} page ${context}`],
        ['With', html`<span class="mono wrap">${peer}</span>`],
        ['Time', clockTime(time)],
        ['Took', us === undefined ? null : duration(us / 1000)],
        ['Error', error],
      ]}
    />
    <${Payload} title="Payload" text=${payload} />
    <${Payload} title="Reply" text=${reply} />
  </aside>`;
}
