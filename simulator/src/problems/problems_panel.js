// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The list of what is wrong, with what to do about it.

import { html } from '../view.js';
import { Chip, Empty } from '../ui/controls.js';
import { problems } from './problems.js';

export function ProblemsPanel() {
  if (problems.value.length === 0) {
    return html`<${Empty} title="Nothing is wrong"
      >Problems of config.xml, refused requests with their causes, pages without the runtime and
      deaths of the library's process appear here.<//
    >`;
  }
  return html`<ul class="problems" tabindex="0" aria-label="Problems">
    ${problems.value.map(
      (problem, index) =>
        html`<li key=${index} class="problem">
          <${Chip} tone=${problem.tone}>${problem.kind}<//>
          <div class="problem-text">
            <p>${problem.title}</p>
            <p class="muted mono">${problem.where}</p>
          </div>
        </li>`
    )}
  </ul>`;
}
