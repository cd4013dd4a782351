// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The set's log, live.

import { html, useEffect, useState } from '../view.js';
import { clearLog } from '../api/session.js';
import { log } from '../state/streams.js';
import { Empty, IconButton, SearchField, Select } from '../ui/controls.js';
import { download } from '../ui/download.js';
import { clockTime, fileStamp, plural } from '../ui/format.js';
import { rowsText, useRows } from '../ui/use_rows.js';
import { VirtualList } from '../ui/virtual_list.js';
import { lineFilter, lineText, priorities } from './log_filter.js';

const rowHeight = 20;
const noFilter = { priority: '2', tag: '', text: '' };

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

function Toolbar({ filter, setFilter, view }) {
  const set = (change) => setFilter({ ...filter, ...change });
  return html`<div class="toolbar" role="toolbar" aria-label="Log">
    <${Select}
      label="Lowest priority"
      value=${filter.priority}
      options=${priorities.map(([number, , name]) => [number, name])}
      onChange=${(priority) => set({ priority })}
    />
    <${SearchField} label="Tag" value=${filter.tag} onInput=${(tag) => set({ tag })} />
    <${SearchField} label="Text" value=${filter.text} onInput=${(text) => set({ text })} />
    <span class="toolbar-count" data-received=${log.total}>
      ${rowsText(view, plural(log.total, 'line'))}
    </span>
    <${IconButton}
      icon=${view.paused ? 'play' : 'pause'}
      label=${view.paused ? 'Go on' : 'Pause'}
      pressed=${view.paused}
      onClick=${view.pause}
    />
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

export function LogPanel() {
  const [filter, setFilter] = useState(noFilter);
  useEffect(() => {
    log.setFilter(lineFilter(filter));
  }, [filter]);
  const view = useRows(log);
  return html`<${Toolbar} filter=${filter} setFilter=${setFilter} view=${view} /> ${
      view.rows.length === 0
        ? html`<${Empty} title=${log.total === 0 ? 'No line yet' : 'No line matches'}
            >${
              log.total === 0
                ? 'What the library and the set write to the log appears here as it is written.'
                : `${plural(log.total, 'line')} in all; the filter hides them.`
            }<//
          >`
        : html`<${VirtualList}
            id="log"
            label="Log lines"
            rows=${view.rows}
            version=${view.version}
            rowHeight=${rowHeight}
            follow=${view.follow}
            onFollow=${view.setFollow}
            selected=${view.selected}
            onSelect=${view.select}
            rowClass=${(line) => `log-row log-row-${line.letter}`}
            renderRow=${(line) => html`<${Line} line=${line} />`}
          />`
    }
    ${view.selected && html`<${Selected} line=${view.selected} />`}`;
}
