// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The line below the television: the last key, the focus, the panel, and what can be done with the
// picture.

import { html } from '../view.js';
import { ask } from '../api/session.js';
import { appId, startUrl } from '../state/run.js';
import { set } from '../state/set.js';
import { keyHistory } from '../state/streams.js';
import { describeKey } from '../remote/key_table.js';
import { KeyOutcome, whyText } from '../remote/history.js';
import { Chip, IconButton, IconLink } from '../ui/controls.js';
import { fileStamp } from '../ui/format.js';
import { toast } from '../state/toasts.js';
import { keyboardShown, keyboardWanted } from './keyboard.js';

async function takePicture() {
  const answer = await ask('screenshot');
  if (!answer) {
    return;
  }
  const link = document.createElement('a');
  link.href = `data:image/png;base64,${answer.png}`;
  link.download = `screen-${fileStamp()}.png`;
  link.click();
  toast('The picture of the screen was saved.');
}

function LastKey() {
  const entry = keyHistory.value[0];
  return html`<p class="last-key" role="status">
    ${
      entry
        ? html`<strong>${describeKey(entry.key_name).label}</strong>
            <${KeyOutcome} entry=${entry} />
            <span class="last-key-why" title=${whyText(entry)}>${whyText(entry)}</span>`
        : html`<span class="muted">Arrow keys, Enter and Backspace work here.</span>`
    }
  </p>`;
}

function Focus() {
  const focused = set.focused.value;
  if (focused === null) {
    return null;
  }
  const title = `The set's focus: ${focused || 'nobody'}`;
  if (focused === appId.value) {
    return html`<span class="status-item" title=${title}>
      <span class="muted">Focus</span>${' '}this application
    </span>`;
  }
  return html`<${Chip} tone="warn" title=${title}>Focus: ${focused || 'nobody'}<//>`;
}

export function ScreenStatus({ scale, panel }) {
  return html`<div class="screen-status">
    <${LastKey} />
    <${Focus} />
    ${
      panel &&
      html`<span class="status-item" title="The panel's pixels, and how large the screen is drawn"
        >${panel.width}×${panel.height}${' '}
        <span class="muted">at ${Math.round(scale * 100)} %</span></span
      >`
    }
    <span class="status-actions">
      <${IconButton}
        icon="keyboard"
        label="On-screen keyboard"
        pressed=${keyboardShown()}
        onClick=${() => (keyboardWanted.value = !keyboardShown())}
      />
      <${IconButton} icon="camera" label="Save a picture of the screen" onClick=${takePicture} />
      <${IconButton}
        icon="reload"
        label="Reload the application's page"
        onClick=${() => ask('page.reload')}
      />
      <${IconLink}
        icon="openTab"
        label="Open the application in a tab of its own"
        href=${startUrl.value}
      />
    </span>
  </div>`;
}
