// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A part of the set's panel that opens and closes, and remembers which.

import { html } from '../view.js';
import { prefer, preferences } from '../state/preferences.js';
import { Icon } from './icons.js';

function toggle(name) {
  const { openSections } = preferences.value;
  const open = openSections.includes(name);
  prefer({
    openSections: open ? openSections.filter((each) => each !== name) : [...openSections, name],
  });
}

/** @param {{name: string, title: string, note?: any}} props `note` shows when closed, too */
export function Section({ name, title, note, children }) {
  const open = preferences.value.openSections.includes(name);
  return html`<section class="set-section">
    <h3>
      <button
        type="button"
        class="set-section-head"
        aria-expanded=${String(open)}
        aria-controls=${`section-${name}`}
        onClick=${() => toggle(name)}
      >
        <span class=${open ? 'turned' : ''}><${Icon} name="chevron" size=${12} /></span>
        <span class="set-section-title">${title}</span>
        ${note !== undefined && html`<span class="set-section-note">${note}</span>`}
      </button>
    </h3>
    ${open && html`<div class="set-section-body" id=${`section-${name}`}>${children}</div>`}
  </section>`;
}

/** Names and values, one below the other. Entries without a value are left out. */
export function Facts({ entries }) {
  return html`<dl class="facts">
    ${entries
      .filter(([, value]) => value !== undefined && value !== null && value !== '')
      .map(
        ([name, value]) =>
          html`<div key=${name}>
            <dt>${name}</dt>
            <dd>${value}</dd>
          </div>`
      )}
  </dl>`;
}
