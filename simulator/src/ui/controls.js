// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Small controls that every panel uses.

import { html } from '../view.js';
import { Icon } from './icons.js';

/** A button with a picture alone; the label is for those who cannot see it, and the tooltip. */
export function IconButton({ icon, label, pressed, onClick, ...rest }) {
  return html`<button
    type="button"
    class="icon-button"
    aria-label=${label}
    title=${label}
    aria-pressed=${pressed === undefined ? undefined : String(pressed)}
    onClick=${onClick}
    ...${rest}
  >
    <${Icon} name=${icon} />
  </button>`;
}

/** A link that looks like an icon button, into a new tab. */
export function IconLink({ icon, label, href }) {
  return html`<a
    class="icon-button"
    href=${href}
    target="_blank"
    rel="noopener"
    aria-label=${label}
    title=${label}
  >
    <${Icon} name=${icon} />
  </a>`;
}

export function Button({ icon, kind = 'plain', children, ...rest }) {
  return html`<button type="button" class=${`button button-${kind}`} ...${rest}>
    ${icon && html`<${Icon} name=${icon} size=${14} />`}${children}
  </button>`;
}

/** A text field with a search glass. */
export function SearchField({ label, value, onInput, ...rest }) {
  return html`<span class="search-field">
    <${Icon} name="search" size=${13} />
    <input
      type="search"
      aria-label=${label}
      placeholder=${label}
      autocomplete="off"
      spellcheck=${false}
      value=${value}
      onInput=${(event) => onInput(event.target.value)}
      ...${rest}
    />
  </span>`;
}

export function Select({ label, value, options, onChange, ...rest }) {
  return html`<select
    aria-label=${label}
    title=${label}
    value=${value}
    onChange=${(event) => onChange(event.target.value)}
    ...${rest}
  >
    ${options.map(
      ([key, text]) => html`<option value=${key} selected=${key === value}>${text}</option>`
    )}
  </select>`;
}

/** One of a few choices, as a row of buttons. */
export function Segments({ label, value, options, onChange }) {
  return html`<div class="segments" role="group" aria-label=${label}>
    ${options.map(
      ([key, text, icon]) =>
        html`<button
          type="button"
          aria-pressed=${String(key === value)}
          aria-label=${icon ? text : undefined}
          title=${icon ? text : undefined}
          onClick=${() => onChange(key)}
        >
          ${icon ? html`<${Icon} name=${icon} size=${14} />` : text}
        </button>`
    )}
  </div>`;
}

/** What a panel shows instead of an empty list. */
export function Empty({ title, children }) {
  return html`<div class="empty">
    <p class="empty-title">${title}</p>
    ${children && html`<p>${children}</p>`}
  </div>`;
}

/** @param {{tone?: 'neutral' | 'good' | 'warn' | 'bad' | 'accent'}} props */
export function Chip({ tone = 'neutral', children, ...rest }) {
  return html`<span class=${`chip chip-${tone}`} ...${rest}>${children}</span>`;
}
