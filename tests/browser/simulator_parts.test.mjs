// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the simulator's page computes, without a browser.

import assert from 'node:assert/strict';
import path from 'node:path';
import test from 'node:test';

import { Feed } from '../../simulator/src/api/feed.js';
import { lineFilter, lineText } from '../../simulator/src/log/log_filter.js';
import { failed, isSlow, nameOf, summary } from '../../simulator/src/messages/describe.js';
import { deathText } from '../../simulator/src/problems/problems.js';
import { axisTicks, profilingRuns } from '../../simulator/src/profiling/records.js';
import { describeKey } from '../../simulator/src/remote/key_table.js';
import {
  aligned,
  fittingScale,
  ofPanel,
  windowPlace,
} from '../../simulator/src/screen/geometry.js';
import { duration } from '../../simulator/src/ui/format.js';
import { repository } from './support/orvane_run.mjs';

const uhd = { width: 3840, height: 2160 };
const fhd = { width: 1920, height: 1080 };

test('a place of a UHD panel is half as far from the corner on the screen', () => {
  assert.deepEqual(ofPanel(uhd, 1920, 1080), { x: 960, y: 540 });
  assert.deepEqual(ofPanel(fhd, 1920, 1080), { x: 1920, y: 1080 });
});

test('the alignment says which point of a box is at its place', () => {
  const size = { width: 100, height: 60 };
  assert.deepEqual(aligned({ x: 500, y: 300 }, 0, size), { left: 500, top: 300 });
  assert.deepEqual(aligned({ x: 500, y: 300 }, 4, size), { left: 450, top: 270 });
  assert.deepEqual(aligned({ x: 500, y: 300 }, 7, size), { left: 450, top: 240 });
  assert.deepEqual(aligned({ x: 500, y: 300 }, 8, size), { left: 400, top: 240 });
});

test('a window is whole, in a quarter, or where it was moved', () => {
  assert.deepEqual(windowPlace(uhd, undefined), { left: 0, top: 0, scale: 1 });
  assert.deepEqual(windowPlace(uhd, { quarterPosition: 0 }), { left: 0, top: 0, scale: 1 });
  assert.deepEqual(windowPlace(uhd, { quarterPosition: 2 }), { left: 960, top: 0, scale: 0.5 });
  assert.deepEqual(windowPlace(uhd, { quarterPosition: 3 }), { left: 0, top: 540, scale: 0.5 });
  assert.deepEqual(windowPlace(uhd, { quarterPosition: null, position: [400, 0] }), {
    left: 200,
    top: 0,
    scale: 1,
  });
});

test('the screen fits into its room in both directions', () => {
  assert.equal(fittingScale(960, 2000), 0.5);
  assert.equal(fittingScale(4000, 540), 0.5);
});

test("the remote control's names are those of the library's script", async () => {
  const { registeredRows } = await import(path.join(repository, 'keys/tables.js'));
  const accepted = new Map();
  for (const [name, symbol] of registeredRows) {
    accepted.set(symbol, [...(accepted.get(symbol) ?? []), name]);
  }
  for (const [symbol, names] of accepted) {
    assert.ok(names.includes(describeKey(symbol).scriptName), `${symbol}: ${names}`);
  }
});

const line = { priority: 4, letter: 'I', tag: 'QM_WEBAPI', text: 'Enter', pid: 1, tid: 2 };

test('lines are filtered by priority, tag and text together', () => {
  const shows = (filter) => lineFilter({ priority: '2', tag: '', text: '', ...filter })(line);
  assert.equal(shows({}), true);
  assert.equal(shows({ priority: '4' }), true);
  assert.equal(shows({ priority: '5' }), false);
  assert.equal(shows({ tag: 'webapi' }), true);
  assert.equal(shows({ tag: 'webapi', text: 'leave' }), false);
});

test('a saved line has the form of the log tool', () => {
  assert.equal(
    lineText({ ...line, tag: 'TAG' }, '10:00:00.000'),
    '10:00:00.000 I/TAG      (P 1, T 2): Enter'
  );
});

const marker = (label, elapsed, ms) => ({
  time_ns: ms * 1e6,
  text: `orvane.RecordProfiling with [App.Id] [${elapsed}][${label}]`,
});

test('profiling marks become a list of labels with gaps, until they are cleared', () => {
  const runs = profilingRuns([
    { time_ns: 0, text: 'orvane.RecordProfiling Failed' },
    marker('start', '0.000', 1000),
    marker('list [1]', '0.250', 1250),
    marker('', '', 1300),
    marker('again', '0.000', 2000),
  ]);
  assert.deepEqual(
    runs.map((run) => run.map(({ label, gapMs }) => [label, gapMs])),
    [
      [
        ['start', null],
        ['list [1]', 250],
      ],
      [['again', null]],
    ]
  );
  assert.equal(runs[0][1].app, 'App.Id');
});

test('a page that starts its marks afresh begins another list', () => {
  const runs = profilingRuns([marker('a', '0.000', 0), marker('b', '0.000', 500)]);
  assert.equal(runs.length, 2);
});

test('the axis has round steps', () => {
  assert.deepEqual(axisTicks(1000, 5), [0, 200, 400, 600, 800, 1000]);
  assert.deepEqual(axisTicks(0.3, 3), [0, 0.1, 0.2, 0.3]);
});

test('a duration has the digits that matter', () => {
  assert.deepEqual([0, 0.4, 12.34, 250, 1000].map(duration), [
    '0 ms',
    '0.40 ms',
    '12.3 ms',
    '250 ms',
    '1.00 s',
  ]);
});

test('a death is told by the method that was handled, as far as it is known', () => {
  const text = '{"cmd":"OrvaneManager_getAppState","args":{}}';
  const reason = 'it was killed by signal 6 (Aborted)';
  assert.equal(
    deathText({ reason, handling: { name: 'dravelt.orvane', text } }),
    `The library's process ended while it handled getAppState of dravelt.orvane: ${reason}.`
  );
  assert.equal(deathText({ signal: 9 }), "The library's process ended: signal 9.");
});

const call = { kind: 'nativeSync', direction: 'fromPage', peer: 'dravelt.orvane' };

test('a native message is called by its method', () => {
  const payload = '{"cmd":"OrvaneManager_getAppState","args":{"appid":""}}';
  assert.equal(nameOf({ ...call, payload }), 'getAppState');
  assert.equal(summary({ ...call, payload }), '{"appid":""}');
  const peer = 'tizen://api/inputdevice/registerKey';
  assert.equal(
    nameOf({ kind: 'runtimeSync', peer, payload: 'XF86Red' }),
    'api/inputdevice/registerKey'
  );
});

test('a refusal counts as failed, whoever refused', () => {
  assert.equal(failed({ ...call, reply: '{"status":"success"}' }), false);
  assert.equal(failed({ ...call, reply: '{"status":"error","error":{}}' }), true);
  assert.equal(failed({ ...call, error: 'the process ended' }), true);
  assert.equal(failed({ kind: 'runtimeSync', direction: 'fromPage', reply: 'error' }), true);
  const posted = { ...call, kind: 'nativePost', direction: 'toPage' };
  assert.equal(failed({ ...posted, payload: '{"status":"error","callbackId":1}' }), true);
});

test('only what a page waits for can be over the budget', () => {
  assert.equal(isSlow({ kind: 'nativeSync', us: 17000 }, 16), true);
  assert.equal(isSlow({ kind: 'nativeSync', us: 15000 }, 16), false);
  assert.equal(isSlow({ kind: 'nativePost', us: 17000 }, 16), false);
});

const numbered = (from, to) =>
  Array.from({ length: to - from + 1 }, (_, at) => ({ seq: from + at }));

test('what is pushed while the list is fetched comes after it, once', async () => {
  const got = [];
  let answer;
  const feed = new Feed(
    () =>
      new Promise((resolve) => {
        answer = resolve;
      }),
    (items) => got.push(...items.map((item) => item.seq))
  );
  const caughtUp = feed.catchUp();
  feed.push(numbered(3, 6));
  answer({ items: numbered(1, 4) });
  await new Promise(setImmediate);
  answer({ items: [] });
  await caughtUp;
  assert.deepEqual(got, [1, 2, 3, 4, 5, 6]);
});

test('what was there before the first push is fetched', async () => {
  const all = numbered(1, 5);
  const got = [];
  const feed = new Feed(
    async (since) => ({ items: all.filter((item) => item.seq > since) }),
    (items) => got.push(...items.map((item) => item.seq))
  );
  feed.push(numbered(4, 5));
  await new Promise(setImmediate);
  assert.deepEqual(got, [1, 2, 3, 4, 5]);
});

test('a gap in what is pushed is fetched', async () => {
  const all = numbered(1, 9);
  const got = [];
  const feed = new Feed(
    async (since) => ({ items: all.filter((item) => item.seq > since) }),
    (items) => got.push(...items.map((item) => item.seq))
  );
  feed.push(numbered(1, 2));
  feed.push(numbered(8, 9));
  await new Promise(setImmediate);
  assert.deepEqual(got, [1, 2, 3, 4, 5, 6, 7, 8, 9]);
});
