// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Every message between the pages, the library and the runtime.

import { html, useEffect, useState } from '../view.js';
import { ask, clearTrace } from '../api/session.js';
import { prefer, preferences } from '../state/preferences.js';
import { trace } from '../state/streams.js';
import { Chip, Empty, IconButton, SearchField, Select } from '../ui/controls.js';
import { downloadJson } from '../ui/download.js';
import { clockTime, duration, fileStamp, plural } from '../ui/format.js';
import { rowsText, useRows } from '../ui/use_rows.js';
import { VirtualList } from '../ui/virtual_list.js';
import { failed, isSlow, kindText, nameOf, summary } from './describe.js';
import { MessageDetails } from './message_details.js';

const rowHeight = 24;
const kinds = [
  ['all', 'All messages'],
  ['native', 'Native'],
  ['runtime', 'Runtime'],
  ['fromPage', 'From pages'],
  ['toPage', 'To pages'],
  ['slow', 'Over the budget'],
  ['failed', 'Failed'],
];

function kindAccepts(kind, budgetMs) {
  const tests = {
    native: (record) => record.kind.startsWith('native'),
    runtime: (record) => !record.kind.startsWith('native'),
    fromPage: (record) => record.direction === 'fromPage',
    toPage: (record) => record.direction === 'toPage',
    slow: (record) => isSlow(record, budgetMs),
    failed,
  };
  return tests[kind] ?? (() => true);
}

function accepts({ kind, text }, budgetMs) {
  const ofKind = kindAccepts(kind, budgetMs);
  const wanted = text.trim().toLowerCase();
  return (record) =>
    ofKind(record) &&
    (wanted === '' ||
      `${record.peer} ${record.payload} ${record.reply ?? ''}`.toLowerCase().includes(wanted));
}

async function exportSession() {
  const session = await ask('trace.export');
  if (session) {
    downloadJson(`session-${fileStamp()}.json`, session);
  }
}

function Budget() {
  return html`<label
    class="inline-label"
    title="A page waits for a synchronous call; what takes longer than this stands out"
    >Budget
    <input
      type="number"
      min="0"
      step="1"
      value=${preferences.value.budgetMs}
      onChange=${(event) => prefer({ budgetMs: Math.max(0, Number(event.target.value) || 0) })}
    />
    ms</label
  >`;
}

function Toolbar({ filter, setFilter, view }) {
  return html`<div class="toolbar" role="toolbar" aria-label="Messages">
    <${Select}
      label="Which messages"
      value=${filter.kind}
      options=${kinds}
      onChange=${(kind) => setFilter({ ...filter, kind })}
    />
    <${SearchField}
      label="Name or payload"
      value=${filter.text}
      onInput=${(text) => setFilter({ ...filter, text })}
    />
    <${Budget} />
    <span class="toolbar-count"> ${rowsText(view, plural(trace.total, 'message'))} </span>
    <${IconButton}
      icon=${view.paused ? 'play' : 'pause'}
      label=${view.paused ? 'Go on' : 'Pause'}
      pressed=${view.paused}
      onClick=${view.pause}
    />
    <${IconButton} icon="download" label="Export the session as JSON" onClick=${exportSession} />
    <${IconButton} icon="trash" label="Clear the messages" onClick=${clearTrace} />
  </div>`;
}

function Row({ record, budgetMs }) {
  const slow = isSlow(record, budgetMs);
  const out = record.direction === 'fromPage';
  return html`<span class="log-time">${clockTime(record.time_ns)}</span>
    <span
      class=${`direction direction-${record.direction}`}
      title=${out ? 'from the page' : 'to the page'}
      >${out ? '→' : '←'}</span
    >
    <span class="message-kind">${kindText(record.kind)}</span>
    <span class="message-name">${nameOf(record)}</span>
    <span class="message-text">${summary(record)}</span>
    ${failed(record) && html`<${Chip} tone="bad">failed<//>`}
    <span class=${`message-time ${slow ? 'message-slow' : ''}`}
      >${record.us === undefined ? '' : duration(record.us / 1000)}</span
    >`;
}

export function MessagesPanel() {
  const [filter, setFilter] = useState({ kind: 'all', text: '' });
  const { budgetMs } = preferences.value;
  useEffect(() => {
    trace.setFilter(accepts(filter, budgetMs));
  }, [filter, budgetMs]);
  const view = useRows(trace);
  return html`<${Toolbar} filter=${filter} setFilter=${setFilter} view=${view} />
    <div class="split">
      ${
        view.rows.length === 0
          ? html`<${Empty} title=${trace.total === 0 ? 'No message yet' : 'No message matches'}
              >${
                trace.total === 0
                  ? 'Each call of dravelt.orvane appears here with its duration and its payload.'
                  : `${plural(trace.total, 'message')} in all; the filter hides them.`
              }<//
            >`
          : html`<${VirtualList}
              id="message"
              label="Messages"
              rows=${view.rows}
              version=${view.version}
              rowHeight=${rowHeight}
              follow=${view.follow}
              onFollow=${view.setFollow}
              selected=${view.selected}
              onSelect=${view.select}
              rowClass=${(record) =>
                `message-row ${isSlow(record, budgetMs) ? 'message-row-slow' : ''}`}
              renderRow=${(record) => html`<${Row} record=${record} budgetMs=${budgetMs} />`}
            />`
      }
      ${
        view.selected &&
        html`<${MessageDetails} record=${view.selected} onClose=${() => view.select(null)} />`
      }
    </div>`;
}
