// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The whole page: remote control, television and panels, the set.

import { html, useEffect } from '../view.js';
import { connection, info } from '../state/run.js';
import { prefer, preferences } from '../state/preferences.js';
import { RemoteControl } from '../remote/remote_control.js';
import { Screen } from '../screen/screen.js';
import { SetPanel } from '../set/set_panel.js';
import { Banners } from './banners.js';
import { Dock } from './dock.js';
import { Refused } from './refused.js';
import { Splitter } from './splitter.js';
import { Toasts } from './toast_list.js';
import { TopBar } from './top_bar.js';

function useTitle() {
  const name = info.value?.app?.name;
  useEffect(() => {
    document.title = name ? `${name} – Orvane` : 'Orvane';
  }, [name]);
}

function Centre() {
  const { dockHeight } = preferences.value;
  return html`<div class="centre" style=${{ '--dock-height': `${dockHeight}px` }}>
    <${Screen} />
    <${Splitter}
      label="Height of the panels"
      axis="y"
      value=${dockHeight}
      range=${[120, 640]}
      onChange=${(value) => prefer({ dockHeight: value })}
    />
    <${Dock} />
  </div>`;
}

export function App() {
  useTitle();
  if (connection.value === 'refused') {
    return html`<${Refused} />`;
  }
  const { setShown, setWidth } = preferences.value;
  return html`<div class="app">
    <${TopBar} />
    <${Banners} />
    <main class="work" style=${{ '--set-width': setShown ? `${setWidth}px` : '0px' }}>
      <h1 class="visually-hidden">Simulated set</h1>
      <${RemoteControl} />
      <${Centre} />
      ${
        setShown &&
        html`<${Splitter}
            label="Width of the set's panel"
            axis="x"
            value=${setWidth}
            range=${[260, 520]}
            onChange=${(value) => prefer({ setWidth: value })}
          />
          <${SetPanel} />`
      }
    </main>
    <${Toasts} />
  </div>`;
}
