// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The set's log, live.

import { html } from '../view.js';
import { clearLog } from '../api/session.js';
import { log } from '../state/streams.js';
import { Empty, IconButton, SearchField, Select } from '../ui/controls.js';
import { download } from '../ui/download.js';
import { clockTime, fileStamp, plural } from '../ui/format.js';
import { RowsButtons, RowsList } from '../ui/rows_controls.js';
import { RowsView } from '../ui/rows_view.js';
import { lineFilter, lineText, priorities } from './log_filter.js';

const rowHeight = 20;
const view = new RowsView(log, { priority: '2', tag: '', text: '' }, lineFilter);

function save(lines) {
  const text = lines.map((line) => lineText(line, clockTime(line.time_ns))).join('\n');
  download(`log-${fileStamp()}.txt`, `${text}\n`, 'text/plain');
}

function Line({ line }) {
  return html`<span class="log-time">${clockTime(line.time_ns)}</span>
    <span class=${`log-priority log-priority-${line.letter}`}>${line.letter}</span>
    <span class="log-tag" title=${line.tag}>${line.tag}</span>
    <span class="log-text">${line.text}</span>`;
}

function Toolbar() {
  const { priority, tag, text } = view.filter.value;
  return html`<div class="toolbar" role="toolbar" aria-label="Log">
    <${Select}
      label="Lowest priority"
      value=${priority}
      options=${priorities.map(([number, , name]) => [number, name])}
      onChange=${(value) => view.setFilter({ priority: value })}
    />
    <${SearchField} label="Tag" value=${tag} onInput=${(value) => view.setFilter({ tag: value })} />
    <${SearchField}
      label="Text"
      value=${text}
      onInput=${(value) => view.setFilter({ text: value })}
    />
    <span class="toolbar-count" data-received=${view.total}>
      ${view.countText(plural(view.total, 'line'))}
    </span>
    <${RowsButtons} view=${view} />
    <${IconButton} icon="download" label="Save the lines shown" onClick=${() => save(view.rows)} />
    <${IconButton} icon="trash" label="Clear the log" onClick=${clearLog} />
  </div>`;
}

function Selected({ line }) {
  return html`<div class="log-selected" role="region" aria-label="Selected line">
    <p class="muted mono">
      ${clockTime(line.time_ns)} · ${line.tag} · process ${line.pid} · thread ${line.tid}
    </p>
    <pre class="mono" tabindex="0">${line.text}</pre>
  </div>`;
}

function NoLine() {
  return view.total === 0
    ? html`<${Empty} title="No line yet"
        >What the library and the set write to the log appears here as it is written.<//
      >`
    : html`<${Empty} title="No line matches"
        >${plural(view.total, 'line')} in all; the filter hides them.<//
      >`;
}

export function LogPanel() {
  return html`<${Toolbar} /> ${
      view.rows.length === 0
        ? html`<${NoLine} />`
        : html`<${RowsList}
            view=${view}
            id="log"
            label="Log lines"
            rowHeight=${rowHeight}
            rowClass=${(line) => `log-row log-row-${line.letter}`}
            renderRow=${(line) => html`<${Line} line=${line} />`}
          />`
    }
    ${view.selected && html`<${Selected} line=${view.selected} />`}`;
}
