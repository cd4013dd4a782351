// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The applications that the set knows: what they are, and how they are.

import { html, useState } from '../view.js';
import { ask } from '../api/session.js';
import { appId, pages } from '../state/run.js';
import { set } from '../state/set.js';
import { toast } from '../state/toasts.js';
import { Button, Chip, Select } from '../ui/controls.js';
import { plural } from '../ui/format.js';
import { Facts, Section } from '../ui/section.js';

const states = ['FOREGROUND', 'BACKGROUND', 'SERVICE', 'UNDEFINED'];
const tones = { FOREGROUND: 'good', BACKGROUND: 'neutral', SERVICE: 'accent' };

function State({ application }) {
  const { id, running, stateName } = application;
  if (!running) {
    return html`<${Button} onClick=${() => ask('applications.launch', { id })}>Launch<//>`;
  }
  const names = states.includes(stateName) ? states : [stateName, ...states];
  return html`<${Select}
      label=${`State of ${id}`}
      value=${stateName}
      options=${names.map((name) => [name, name])}
      onChange=${(state) => ask('applications.setState', { id, state })}
    />
    <${Button}
      disabled=${set.focused.value === id}
      onClick=${() => ask('applications.focus', { id })}
      >Focus<//
    >
    <${Button} onClick=${() => ask('applications.terminate', { id })}>End<//>`;
}

function contents(privileges, metadata) {
  const entries = plural(metadata.length, 'metadata entry', 'metadata entries');
  return `${plural(privileges.length, 'privilege')}, ${entries}`;
}

function Details({ application }) {
  const { version, folder, pid, metadata, privileges } = application;
  return html`<details class="more">
    <summary>${contents(privileges, metadata)}</summary>
    <${Facts}
      entries=${[
        ['Version', version],
        ['Process', pid || null],
        ['Folder', html`<span class="mono wrap">${folder}</span>`],
      ]}
    />
    ${
      privileges.length > 0 &&
      html`<h4>Privileges</h4>
        <ul class="plain-list mono">
          ${privileges.map((privilege) => html`<li class="wrap">${privilege}</li>`)}
        </ul>`
    }
    ${
      metadata.length > 0 &&
      html`<h4>Metadata</h4>
        <${Facts}
          entries=${metadata.map(([key, value]) => [
            html`<span class="mono wrap">${key}</span>`,
            html`<span class="mono wrap">${value || '(empty)'}</span>`,
          ])}
        />`
    }
  </details>`;
}

function ClearFocus() {
  return html`<p class="focus-line">
    <span>Focus: ${set.focused.value || 'nobody'}</span>
    <${Button}
      disabled=${set.focused.value === ''}
      onClick=${() => ask('applications.focus', { id: '' })}
      >Take it away<//
    >
  </p>`;
}

function Application({ application }) {
  const { id, name, running, stateName } = application;
  const focused = set.focused.value === id;
  const open = id === appId.value ? pages.value.length : 0;
  return html`<li class="application">
    <p class="application-head">
      <strong title=${id}>${name || id}</strong>
      <${Chip} tone=${running ? (tones[stateName] ?? 'warn') : 'neutral'}
        >${running ? stateName.toLowerCase() : 'not running'}<//
      >
      ${focused && html`<${Chip} tone="accent">focus<//>`}
    </p>
    <p class="muted mono">${id}${open > 1 && ` · ${open} pages`}</p>
    <p class="application-actions"><${State} application=${application} /></p>
    <${Details} application=${application} />
  </li>`;
}

/** Another application, so that windows, focus and keys are shared with somebody. */
function NewApplication() {
  const [folder, setFolder] = useState('');
  const install = async (event) => {
    event.preventDefault();
    const installed = await ask('applications.install', { folder: folder.trim() });
    if (installed !== undefined) {
      setFolder('');
      toast(`${installed.name || installed.id} is installed. It has no page in this run.`);
    }
  };
  return html`<form class="application-new" onSubmit=${install}>
    <input
      type="text"
      class="mono"
      aria-label="Folder or package of another application"
      placeholder="another: folder or .wgt"
      required
      spellcheck=${false}
      value=${folder}
      onInput=${(event) => setFolder(event.target.value)}
    />
    <${Button} type="submit" icon="plus">Install<//>
  </form>`;
}

export function Applications() {
  const applications = set.applications.value ?? [];
  const running = applications.filter((each) => each.running).length;
  return html`<${Section} name="applications" title="Applications" note=${`${running} running`}>
    <ul class="applications">
      ${applications.map((each) => html`<${Application} key=${each.id} application=${each} />`)}
    </ul>
    <${ClearFocus} />
    <${NewApplication} />
  <//>`;
}
