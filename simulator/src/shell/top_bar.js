// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The line at the top: what runs, how it is, and what concerns the whole page.

import { html, useState } from '../view.js';
import { appId, connection, info, process, topPage } from '../state/run.js';
import { prefer, preferences } from '../state/preferences.js';
import { Chip, IconButton, Segments } from '../ui/controls.js';
import { ShortcutsDialog } from './shortcuts_dialog.js';

const themes = [
  ['light', 'Light', 'sun'],
  ['system', 'As the system', 'system'],
  ['dark', 'Dark', 'moon'],
];

const processTexts = {
  running: ['good', 'Library running'],
  died: ['bad', 'Library ended'],
  restarting: ['warn', 'Library restarting'],
  down: ['bad', 'Library down'],
};

function ProcessChip() {
  if (connection.value !== 'open') {
    const text = connection.value === 'lost' ? 'No connection' : 'Connecting…';
    return html`<${Chip} tone="warn" role="status">${text}<//>`;
  }
  const { state, pid } = process.value ?? {};
  const [tone, text] = processTexts[state] ?? ['neutral', 'Starting'];
  return html`<${Chip} tone=${tone} role="status" title=${pid && `process ${pid}`}>${text}<//>`;
}

/** How the page's synchronous calls travel. */
function CallsChip() {
  const page = topPage.value;
  if (!page || page.runtime === 'noScript') {
    return null;
  }
  return page.isolated
    ? html`<${Chip}
        title="The page is cross-origin isolated: synchronous calls wait on shared memory"
        >Fast calls<//
      >`
    : html`<${Chip}
        tone="warn"
        title="The page is not cross-origin isolated: each synchronous call is a blocking request"
        >Slow calls<//
      >`;
}

export function TopBar() {
  const [shortcuts, setShortcuts] = useState(false);
  const { theme, setShown } = preferences.value;
  const app = info.value?.app;
  return html`<header class="top-bar">
    <span class="brand"><img src="/icon.svg" alt="" width="20" height="20" /> Orvane</span>
    <span class="top-app">
      <strong>${app?.name || appId.value || 'Starting…'}</strong>
      <span class="muted mono">${appId.value} ${app?.version ?? ''}</span>
    </span>
    <span class="top-chips"><${ProcessChip} /><${CallsChip} /></span>
    <span class="top-actions">
      <${IconButton}
        icon="keyboard"
        label="Keyboard shortcuts"
        onClick=${() => setShortcuts(true)}
      />
      <${Segments}
        label="Theme"
        value=${theme}
        options=${themes}
        onChange=${(value) => prefer({ theme: value })}
      />
      <${IconButton}
        icon="sidebar"
        label="Panel of the set"
        pressed=${setShown}
        onClick=${() => prefer({ setShown: !setShown })}
      />
    </span>
    ${shortcuts && html`<${ShortcutsDialog} onClose=${() => setShortcuts(false)} />`}
  </header>`;
}
