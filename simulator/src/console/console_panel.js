// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the pages wrote to their console, and their uncaught errors.

import { html } from '../view.js';
import { call } from '../api/session.js';
import { consoleRows } from '../state/streams.js';
import { Empty, IconButton, SearchField, Select } from '../ui/controls.js';
import { clockTime, plural } from '../ui/format.js';
import { RowsButtons, RowsList } from '../ui/rows_controls.js';
import { RowsView } from '../ui/rows_view.js';

const rowHeight = 22;
const levels = ['debug', 'log', 'info', 'warn', 'error'];
const choices = [
  ['debug', 'Every level'],
  ['log', 'Log and above'],
  ['warn', 'Warnings and errors'],
  ['error', 'Errors'],
];

function accepts({ level, text }) {
  const lowest = levels.indexOf(level);
  const wanted = text.trim().toLowerCase();
  return (entry) =>
    levels.indexOf(entry.level) >= lowest &&
    (wanted === '' || entry.text.toLowerCase().includes(wanted));
}

const view = new RowsView(consoleRows, { level: 'debug', text: '' }, accepts);

function clear() {
  consoleRows.clear();
  call('console.clear').catch(() => {});
}

function Toolbar() {
  const { level, text } = view.filter.value;
  return html`<div class="toolbar" role="toolbar" aria-label="Console">
    <${Select}
      label="Level"
      value=${level}
      options=${choices}
      onChange=${(value) => view.setFilter({ level: value })}
    />
    <${SearchField}
      label="Text"
      value=${text}
      onInput=${(value) => view.setFilter({ text: value })}
    />
    <span class="toolbar-count">${view.countText(plural(view.total, 'entry', 'entries'))}</span>
    <${RowsButtons} view=${view} />
    <${IconButton} icon="trash" label="Clear the console" onClick=${clear} />
  </div>`;
}

function Entry({ entry }) {
  return html`<span class="log-time">${clockTime(entry.time_ns)}</span>
    <span class="console-level">${entry.level}</span>
    <span class="log-text">${entry.text}</span>
    <span class="muted mono">${entry.where ?? ''}</span>`;
}

export function ConsolePanel() {
  return html`<${Toolbar} /> ${
      view.rows.length === 0
        ? html`<${Empty} title=${view.total === 0 ? 'Nothing yet' : 'No entry matches'}
            >console.log and uncaught errors of the application's pages appear here.<//
          >`
        : html`<${RowsList}
            view=${view}
            id="console"
            label="Console"
            rowHeight=${rowHeight}
            rowClass=${(entry) => `console-row console-${entry.level}`}
            renderRow=${(entry) => html`<${Entry} entry=${entry} />`}
          />`
    }
    ${
      view.selected && html`<pre class="log-selected mono" tabindex="0">${view.selected.text}</pre>`
    }`;
}
