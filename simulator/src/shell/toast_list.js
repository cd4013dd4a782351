// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The notices of state/toasts.js.

import { html } from '../view.js';
import { dismissToast, toasts } from '../state/toasts.js';
import { IconButton } from '../ui/controls.js';

export function Toasts() {
  return html`<div class="toasts" role="status" aria-live="polite">
    ${toasts.value.map(
      ({ id, kind, text }) =>
        html`<div key=${id} class=${`toast toast-${kind}`}>
          <p>${text}</p>
          <${IconButton} icon="close" label="Close this notice" onClick=${() => dismissToast(id)} />
        </div>`
    )}
  </div>`;
}
