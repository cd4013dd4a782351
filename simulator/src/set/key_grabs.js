// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Which application asked for which keys.

import { html } from '../view.js';
import { set } from '../state/set.js';
import { describeKey } from '../remote/key_table.js';
import { Section } from '../ui/section.js';

export function KeyGrabs() {
  const grabs = set.keyGrabs.value ?? [];
  return html`<${Section} name="keyGrabs" title="Registered keys" note=${grabs.length}>
    ${
      grabs.length === 0 &&
      html`<p class="hint">
        No application has registered a key. The six mandatory keys reach the focused one anyway.
      </p>`
    }
    <ul class="grabs">
      ${grabs.map(
        ({ app, key, mode }) =>
          html`<li key=${`${app} ${key}`}>
            <span title=${key}>${describeKey(key).scriptName}</span>
            <span class="muted">${mode}</span>
            <span class="muted ellipsis" title=${app}>${app}</span>
          </li>`
      )}
    </ul>
  <//>`;
}
