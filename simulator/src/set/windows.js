// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The windows of the running applications, the topmost first.

import { html } from '../view.js';
import { set } from '../state/set.js';
import { Facts, Section } from '../ui/section.js';

const quarters = ['whole screen', 'top left', 'top right', 'bottom left', 'bottom right'];

function placeText({ quarterPosition, position }) {
  if (position) {
    return `moved to ${position[0]}, ${position[1]}`;
  }
  return quarterPosition === null || quarterPosition === undefined
    ? 'as launched'
    : `quarter ${quarterPosition}: ${quarters[quarterPosition]}`;
}

function hintsText(hints) {
  return Object.entries(hints ?? {})
    .map(([key, value]) => `${key} = ${value}`)
    .join(', ');
}

export function Windows() {
  const { stack, list } = set.windows.value ?? { stack: [], list: [] };
  const shown = [...list].sort(
    (a, b) => (stack.indexOf(a.app) + 1 || Infinity) - (stack.indexOf(b.app) + 1 || Infinity)
  );
  return html`<${Section} name="windows" title="Windows" note=${`${stack.length} shown`}>
    ${shown.length === 0 && html`<p class="hint">No application runs.</p>`}
    <ol class="windows">
      ${shown.map(
        (window) =>
          html`<li key=${window.app}>
            <strong>${window.app}</strong>
            <${Facts}
              entries=${[
                ['Order', stack.includes(window.app) ? stack.indexOf(window.app) + 1 : 'not shown'],
                ['Stack mode', window.stackMode],
                ['Place', placeText(window)],
                ['Wants the focus', window.focusWanted ? 'yes' : 'no'],
                ['Hints', hintsText(window.hints)],
              ]}
            />
          </li>`
      )}
    </ol>
  <//>`;
}
