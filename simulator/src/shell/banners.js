// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What cannot wait: the connection, the library's process, a page in which nothing of Orvane runs.

import { html, signal } from '../view.js';
import { ask } from '../api/session.js';
import { connection, process, topPage } from '../state/run.js';
import { deathText } from '../problems/problems.js';
import { Button, IconButton } from '../ui/controls.js';
import { Icon } from '../ui/icons.js';

/** The death whose notice a person has closed. */
const dismissedDeath = signal(0);

function Banner({ tone, children, actions, details }) {
  return html`<div class=${`banner banner-${tone}`} role="alert">
    <${Icon} name="alert" />
    <div class="banner-text">
      ${children}
      ${
        details &&
        html`<details>
          <summary>What it wrote at its end</summary>
          <pre class="mono" tabindex="0">${details}</pre>
        </details>`
      }
    </div>
    ${actions}
  </div>`;
}

function Handled({ handling }) {
  if (!handling?.text || handling.text === '{}') {
    return null;
  }
  return html`<p>The message: <code class="wrap">${handling.text.slice(0, 400)}</code></p>`;
}

function outcome(state) {
  const texts = {
    running:
      'It was started again with the state of the set; instances are made anew at the next call.',
    down: 'It ended three times within five seconds and was not started again.',
    restarting: 'It is being started again.',
    died: 'It is being started again.',
  };
  return texts[state] ?? '';
}

function ProcessBanner() {
  const { state, deaths = [] } = process.value ?? {};
  const death = deaths[deaths.length - 1];
  if (!death || (state === 'running' && dismissedDeath.value === death.time_ns)) {
    return null;
  }
  const actions =
    state === 'running'
      ? html`<${IconButton}
          icon="close"
          label="Close this notice"
          onClick=${() => (dismissedDeath.value = death.time_ns)}
        />`
      : html`<${Button} kind="primary" onClick=${() => ask('process.restart')}>Restart<//>`;
  return html`<${Banner}
    tone=${state === 'running' ? 'warn' : 'bad'}
    actions=${actions}
    details=${death.stderr}
  >
    <p><strong>${deathText(death)}</strong> ${outcome(state)}</p>
    <${Handled} handling=${death.handling} />
  <//>`;
}

function PageBanner() {
  const page = topPage.value;
  if (!page || (page.runtime !== 'noScript' && !page.problem)) {
    return null;
  }
  return html`<${Banner} tone="warn">
    <p>
      <strong>dravelt.orvane is missing in ${page.title || page.href}.</strong>
      ${' '}${
        page.problem ??
        "No script ran because of the page's content policy. Allow 'self' in its script-src."
      }
    </p>
  <//>`;
}

export function Banners() {
  return html`<div class="banners">
    ${
      connection.value === 'lost' &&
      html`<${Banner} tone="bad">
        <p>
          <strong>The connection to orvane run was lost.</strong> Trying again; if it was ended,
          start it again and open the link that it prints.
        </p>
      <//>`
    }
    <${ProcessBanner} />
    <${PageBanner} />
  </div>`;
}
