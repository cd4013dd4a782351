// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The set: what it is, what runs on it, and what can be changed or made to fail.

import { html } from '../view.js';
import { set } from '../state/set.js';
import { Applications } from './applications.js';
import { Faults } from './faults.js';
import { Features } from './features.js';
import { Identity } from './identity.js';
import { KeyGrabs } from './key_grabs.js';
import { Keyboard } from './keyboard_section.js';
import { Profile } from './profile.js';
import { ScreenSaverSection } from './screen_saver_section.js';
import { Settings } from './settings.js';
import { Windows } from './windows.js';

function Waiting() {
  return html`<div class="skeleton" aria-busy="true" aria-label="Waiting for the set">
    ${[70, 90, 55, 80, 65, 75].map((width) => html`<span style=${{ width: `${width}%` }}></span>`)}
  </div>`;
}

export function SetPanel() {
  return html`<aside class="set-panel" aria-labelledby="set-title">
    <h2 id="set-title" class="panel-title">Set</h2>
    ${
      set.profile.value === null
        ? html`<${Waiting} />`
        : html`<${Profile} />
            <${Applications} />
            <${Windows} />
            <${KeyGrabs} />
            <${Keyboard} />
            <${ScreenSaverSection} />
            <${Features} />
            <${Settings} />
            <${Faults} />
            <${Identity} />`
    }
  </aside>`;
}
