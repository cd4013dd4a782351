// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Every message between the pages, the library and the runtime.

import { computed, html } from '../view.js';
import { ask, clearTrace } from '../api/session.js';
import { prefer, preferences } from '../state/preferences.js';
import { trace } from '../state/streams.js';
import { Chip, Empty, IconButton, SearchField, Select } from '../ui/controls.js';
import { downloadJson } from '../ui/download.js';
import { clockTime, duration, fileStamp, plural } from '../ui/format.js';
import { RowsButtons, RowsList } from '../ui/rows_controls.js';
import { RowsView } from '../ui/rows_view.js';
import { failed, isSlow, kindText, nameOf, summary } from './describe.js';
import { MessageDetails } from './message_details.js';

const rowHeight = 24;
const budget = computed(() => preferences.value.budgetMs);
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

function accepts({ kind, text }) {
  const ofKind = kindAccepts(kind, kind === 'slow' ? budget.value : 0);
  const wanted = text.trim().toLowerCase();
  return (record) =>
    ofKind(record) &&
    (wanted === '' ||
      `${record.peer} ${record.payload} ${record.reply ?? ''}`.toLowerCase().includes(wanted));
}

const view = new RowsView(trace, { kind: 'all', text: '' }, accepts);

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

function Toolbar() {
  const { kind, text } = view.filter.value;
  return html`<div class="toolbar" role="toolbar" aria-label="Messages">
    <${Select}
      label="Which messages"
      value=${kind}
      options=${kinds}
      onChange=${(value) => view.setFilter({ kind: value })}
    />
    <${SearchField}
      label="Name or payload"
      value=${text}
      onInput=${(value) => view.setFilter({ text: value })}
    />
    <${Budget} />
    <span class="toolbar-count">${view.countText(plural(view.total, 'message'))}</span>
    <${RowsButtons} view=${view} />
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
      role="img"
      aria-label=${out ? 'from the page' : 'to the page'}
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

function NoMessage() {
  return view.total === 0
    ? html`<${Empty} title="No message yet"
        >Each call of dravelt.orvane appears here with its duration and its payload.<//
      >`
    : html`<${Empty} title="No message matches"
        >${plural(view.total, 'message')} in all; the filter hides them.<//
      >`;
}

function rowClass(record) {
  return `message-row ${isSlow(record, budget.value) ? 'message-row-slow' : ''}`;
}

export function MessagesPanel() {
  return html`<${Toolbar} />
    <div class="split">
      ${
        view.rows.length === 0
          ? html`<${NoMessage} />`
          : html`<${RowsList}
              view=${view}
              id="message"
              label="Messages"
              rowHeight=${rowHeight}
              rowClass=${rowClass}
              renderRow=${(record) => html`<${Row} record=${record} budgetMs=${budget.value} />`}
            />`
      }
      ${
        view.selected &&
        html`<${MessageDetails} record=${view.selected} onClose=${() => view.select(null)} />`
      }
    </div>`;
}
