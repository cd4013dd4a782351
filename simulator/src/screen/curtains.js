// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What lies between the viewer and the application's picture: other windows, the background, the
// end of the application.

import { html } from '../view.js';
import { ask } from '../api/session.js';
import { appId } from '../state/run.js';
import { ownApplication, windowsAbove } from './focus.js';

function Curtain({ title, text, action, onClick }) {
  return html`<div class="curtain" role="status">
    <p class="curtain-title">${title}</p>
    <p>${text}</p>
    <button type="button" onClick=${onClick}>${action}</button>
  </div>`;
}

const focusOwn = () => ask('applications.focus', { id: appId.value });

export function Curtains() {
  const own = ownApplication.value;
  if (!own) {
    return null;
  }
  if (!own.running || own.stateName === 'TERMINATED') {
    return html`<${Curtain}
      title="The application does not run"
      text=${`${own.id} was terminated on this set. Its page is still open, and its calls fail.`}
      action="Launch it"
      onClick=${() => ask('applications.launch', { id: own.id })}
    />`;
  }
  if (own.stateName === 'BACKGROUND') {
    return html`<${Curtain}
      title="In the background"
      text=${`Another application, or the set itself, is in front of ${own.id}.`}
      action="Bring it to the front"
      onClick=${focusOwn}
    />`;
  }
  if (windowsAbove.value.length > 0) {
    return html`<${Curtain}
      title=${windowsAbove.value[0]}
      text="Its window is above this application's. Its picture is not part of this run."
      action="Raise this application"
      onClick=${focusOwn}
    />`;
  }
  return null;
}
