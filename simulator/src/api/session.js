// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Between the server and the page's state: connects, asks for everything once, and then follows the
// events. After a loss it asks for what it missed.

import { batch } from '../view.js';
import { Connection } from './connection.js';
import { Feed } from './feed.js';
import { connection, info, pages, process } from '../state/run.js';
import { set, takePart, takeRow, takeState } from '../state/set.js';
import { toast } from '../state/toasts.js';
import * as streams from '../state/streams.js';

/** @type {Connection} */
let server;

const logFeed = new Feed(
  async (since, limit) => ({ items: (await call('log.list', { since, limit })).lines }),
  (lines) => streams.log.add(lines)
);
const traceFeed = new Feed(
  async (since, limit) => ({ items: (await call('trace.list', { since, limit })).records }),
  (records) => streams.trace.add(records.map(withTexts))
);

/** Arguments and answers that are no texts are read as JSON. */
function withTexts(record) {
  const text = (value) =>
    value === undefined || value === null || typeof value === 'string'
      ? value
      : JSON.stringify(value);
  return { ...record, payload: text(record.payload), reply: text(record.reply) };
}

/** @returns {Promise<any>} */
export function call(method, params) {
  return server.call(method, params);
}

/** A call of a person's: what goes wrong is shown. @returns {Promise<any>} undefined on failure */
export async function ask(method, params) {
  try {
    return (await call(method, params)) ?? null;
  } catch (error) {
    toast(error.message, 'error');
    return undefined;
  }
}

const handlers = {
  log: (lines) => logFeed.push(lines),
  trace: takeTrace,
  changed: takeRow,
  pages: (list) => (pages.value = list),
  process: processChanged,
  console: (entry) => streams.addConsole([entry]),
  explain: streams.addExplanation,
  key: streams.addKey,
  kernelMarker: streams.addMarker,
  contextTask: (task) => (streams.contextTask.value = { ...task, at: Date.now() }),
  reload: ({ file }) => toast(`${file} was saved; the page was reloaded.`),
};

function takeEvents(events) {
  batch(() => {
    for (const { name, data } of events) {
      if (!takePart(name, data)) {
        handlers[name]?.(data);
      }
    }
  });
}

function processChanged(next) {
  const before = process.value;
  process.value = next;
  if (next.state === 'running' && before && before.pid !== next.pid) {
    refreshSet();
  }
}

/** The UUID is made by a call, and no event tells it. */
function takeTrace(records) {
  traceFeed.push(records);
  if (!set.uuid.value && records.some(({ payload }) => String(payload).includes('_getUuid"'))) {
    refreshSet();
  }
}

/** Asks for the whole state of the set anew. */
export async function refreshSet() {
  const state = await call('state.get').catch(() => null);
  if (state) {
    batch(() => takeState(state));
  }
}

/** What an older server may not know is no reason to complain. */
function callIfKnown(method, otherwise) {
  return call(method).catch(() => otherwise);
}

async function refreshEverything() {
  const first = info.value === null;
  info.value = await call('run.info');
  await Promise.all([
    refreshSet(),
    call('pages.list').then((list) => (pages.value = list)),
    call('process.get').then((next) => (process.value = next)),
    logFeed.catchUp(),
    traceFeed.catchUp(),
  ]);
  streams.explanations.value = await callIfKnown('explain.list', streams.explanations.value);
  streams.markers.value = await callIfKnown('markers.list', streams.markers.value);
  if (first) {
    streams.addConsole((await callIfKnown('console.list', { entries: [] })).entries);
  }
}

/** @param {string} token the run's secret */
export function connect(token) {
  const scheme = location.protocol === 'https:' ? 'wss' : 'ws';
  server = new Connection(`${scheme}://${location.host}/api?token=${encodeURIComponent(token)}`, {
    onEvents: takeEvents,
    onState: (state) => {
      connection.value = state;
      if (state === 'open') {
        refreshEverything().catch((error) => toast(error.message, 'error'));
      }
    },
  });
}

/** Empties the server's log and this page's. */
export async function clearLog() {
  if ((await ask('log.clear')) !== undefined) {
    streams.log.clear();
  }
}

export async function clearTrace() {
  if ((await ask('trace.clear')) !== undefined) {
    streams.trace.clear();
  }
}
