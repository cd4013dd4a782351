// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the pages wrote to their console, and their uncaught errors.

import { html, useEffect, useState } from '../view.js';
import { call } from '../api/session.js';
import { consoleRows } from '../state/streams.js';
import { Empty, IconButton, SearchField, Select } from '../ui/controls.js';
import { clockTime, plural } from '../ui/format.js';
import { useRows } from '../ui/use_rows.js';
import { VirtualList } from '../ui/virtual_list.js';

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

function clear() {
  consoleRows.clear();
  call('console.clear').catch(() => {});
}

export function ConsolePanel() {
  const [filter, setFilter] = useState({ level: 'debug', text: '' });
  useEffect(() => {
    consoleRows.setFilter(accepts(filter));
  }, [filter]);
  const view = useRows(consoleRows);
  return html`<div class="toolbar" role="toolbar" aria-label="Console">
      <${Select}
        label="Level"
        value=${filter.level}
        options=${choices}
        onChange=${(level) => setFilter({ ...filter, level })}
      />
      <${SearchField}
        label="Text"
        value=${filter.text}
        onInput=${(text) => setFilter({ ...filter, text })}
      />
      <span class="toolbar-count">${plural(view.rows.length, 'entry', 'entries')}</span>
      <${IconButton} icon="trash" label="Clear the console" onClick=${clear} />
    </div>
    ${
      view.rows.length === 0
        ? html`<${Empty} title=${consoleRows.total === 0 ? 'Nothing yet' : 'No entry matches'}
            >console.log and uncaught errors of the application's pages appear here.<//
          >`
        : html`<${VirtualList}
            id="console"
            label="Console"
            rows=${view.rows}
            version=${view.version}
            rowHeight=${rowHeight}
            follow=${view.follow}
            onFollow=${view.setFollow}
            selected=${view.selected}
            onSelect=${view.select}
            rowClass=${(entry) => `console-row console-${entry.level}`}
            renderRow=${(entry) =>
              html`<span class="log-time">${clockTime(entry.time_ns)}</span>
                <span class="console-level">${entry.level}</span>
                <span class="log-text">${entry.text}</span>
                <span class="muted mono">${entry.where ?? ''}</span>`}
          />`
    }
    ${
      view.selected && html`<pre class="log-selected mono" tabindex="0">${view.selected.text}</pre>`
    }`;
}
