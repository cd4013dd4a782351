// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The page without the secret of this run.

import { html } from '../view.js';

export function Refused() {
  return html`<main class="refused">
    <img src="/icon.svg" alt="" width="48" height="48" />
    <h1>This tab does not belong to this run</h1>
    <p>
      Each start of <code>orvane run</code> has a secret of its own, so that no other page of this
      browser can use the set. Open the link that it printed.
    </p>
  </main>`;
}
