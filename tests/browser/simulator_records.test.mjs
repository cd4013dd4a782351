// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The simulator's panels below the television: log, messages, profiling, resources, console and
// problems.

import assert from 'node:assert/strict';
import test from 'node:test';

import { until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';
import { openSimulator } from './support/simulator.mjs';

const scene = makeScene();
const nowNs = () => Date.now() * 1e6;

const error = { priority: 6, letter: 'E', tag: 'WEBAPI_PLUGINS', text: 'it failed' };

/** Waits until the log has received so many lines. */
function received(page, lines) {
  return page.waitForFunction(
    (wanted) => Number(document.querySelector('[data-received]').dataset.received) >= wanted,
    lines
  );
}

test('lines appear as they are written, and are filtered', async () => {
  const simulator = await openSimulator(scene);
  simulator.server('log.write', { count: 30, text: 'Enter' });
  simulator.server('log.write', error);
  await simulator.shows('.toolbar-count', '31 of 31 lines');
  await simulator.dock.getByLabel('Lowest priority').selectOption('5');
  await simulator.shows('.toolbar-count', '1 of 31 lines');
  await simulator.dock.getByLabel('Lowest priority').selectOption('2');
  await simulator.dock.getByLabel('Tag').fill('qm_');
  await simulator.dock.getByLabel('Text').fill('enter 7');
  await simulator.shows('.toolbar-count', '1 of 31 lines');
  await simulator.dock.getByLabel('Text').fill('nothing has this');
  await simulator.shows('.empty', 'No line matches');
  simulator.assertClean();
});

test('a paused log stays as it is, and goes on with everything', async () => {
  const simulator = await openSimulator(scene);
  simulator.server('log.write', { count: 5 });
  await simulator.shows('.toolbar-count', '5 of 5');
  await simulator.dock.getByLabel('Pause').click();
  simulator.server('log.write', { count: 7 });
  await simulator.shows('.toolbar-count', '7 new · 5 of 12 lines');
  await simulator.dock.getByLabel('Go on').click();
  await simulator.shows('.toolbar-count', '12 of 12 lines');
});

test('a paused log is filtered as it was, and can be cleared', async () => {
  const simulator = await openSimulator(scene);
  simulator.server('log.write', { count: 20 });
  await simulator.shows('.toolbar-count', '20 of 20');
  await simulator.dock.getByLabel('Pause').click();
  simulator.server('log.write', { count: 20 });
  await simulator.dock.getByLabel('Text').fill('line 1');
  await simulator.shows('.toolbar-count', '20 new · 11 of 40 lines');
  await simulator.dock.getByLabel('Text').fill('');
  await simulator.shows('.toolbar-count', '20 new · 20 of 40 lines');
  await simulator.dock.getByLabel('Clear the log').click();
  await simulator.shows('.empty', 'No line yet');
  simulator.server('log.write', { count: 50 });
  await simulator.shows('.toolbar-count', '50 of 50 lines');
});

test('filter and pause stay while another panel is open', async () => {
  const simulator = await openSimulator(scene);
  simulator.server('log.write', { count: 5 });
  await simulator.dock.getByLabel('Text').fill('line 3');
  await simulator.dock.getByLabel('Pause').click();
  await simulator.tab('messages');
  simulator.server('log.write', { count: 5 });
  await simulator.tab('log');
  await simulator.shows('.toolbar-count', '5 new · 1 of 10 lines');
});

test('a line that is being read is not scrolled away', async () => {
  const simulator = await openSimulator(scene);
  simulator.server('log.write', { count: 300 });
  await simulator.shows('.log-row', 'a line 299');
  await simulator.page.locator('.log-row', { hasText: 'a line 297' }).click();
  simulator.server('log.write', { count: 300, text: 'more' });
  await simulator.shows('.toolbar-count', '600 of 600');
  await simulator.page.locator('.log-row', { hasText: 'a line 297' }).waitFor();
  await simulator.dock.getByLabel('Keep the newest in sight').click();
  await simulator.shows('.log-row', 'more 299');
});

test('the lines shown are saved, and the log is cleared', async () => {
  const simulator = await openSimulator(scene);
  simulator.server('log.write', { count: 3, text: 'Enter' });
  await simulator.shows('.toolbar-count', '3 of 3');
  const save = () => simulator.dock.getByLabel('Save the lines shown').click();
  const { name, text } = await simulator.downloaded(save);
  assert.match(name, /^log-\d{8}-\d{6}\.txt$/);
  assert.match(text, /^[\d:.]{12} I\/QM_WEBAPI \(P 4711, T 4712\): Enter 0\n/);
  assert.equal(text.split('\n').length, 4);
  await simulator.dock.getByLabel('Clear the log').click();
  await simulator.shows('.empty', 'No line yet');
});

test('a line is read in full, with the keyboard too', async () => {
  const simulator = await openSimulator(scene);
  simulator.server('log.write', { text: `first ${'long '.repeat(200)}end` });
  simulator.server('log.write', error);
  await simulator.shows('.toolbar-count', '2 of 2');
  await simulator.page.focus('.virtual-list');
  await simulator.page.keyboard.press('ArrowUp');
  await simulator.shows('.log-selected', 'it failed');
  await simulator.page.keyboard.press('ArrowUp');
  await simulator.shows('.log-selected', 'long end');
  await simulator.page.keyboard.press('Escape');
  await simulator.page.locator('.log-selected').waitFor({ state: 'detached' });
});

test('of five thousand lines a second none is dropped, and the page stays quick', async (t) => {
  const simulator = await openSimulator(scene);
  const seconds = 6;
  await simulator.page.evaluate(() => {
    window.frames_ = [];
    let last = performance.now();
    const frame = (now) => {
      window.frames_.push(now - last);
      last = now;
      requestAnimationFrame(frame);
    };
    requestAnimationFrame(frame);
  });
  const started = performance.now();
  let sent = 0;
  await new Promise((done) => {
    const timer = setInterval(() => {
      const due = Math.min(seconds * 5000, Math.floor((performance.now() - started) * 5));
      if (due > sent) {
        simulator.server('log.write', { count: due - sent, text: 'flood' });
        sent = due;
      }
      if (sent === seconds * 5000) {
        clearInterval(timer);
        done();
      }
    }, 16);
  });
  const lag = performance.now();
  await received(simulator.page, sent);
  const behindMs = performance.now() - lag;
  await simulator.shows('.toolbar-count', '30,000 of 30,000 lines');
  const frames = (await simulator.page.evaluate(() => window.frames_)).sort((a, b) => a - b);
  const median = frames[Math.floor(frames.length / 2)];
  const slow = frames[Math.floor(frames.length * 0.95)];
  t.diagnostic(
    `${sent} lines in ${seconds} s: all there ${behindMs.toFixed(0)} ms after the last was sent; ` +
      `frames ${median.toFixed(1)} ms at the median, ${slow.toFixed(1)} ms at the 95th percentile`
  );
  const shown = await simulator.page.locator('.log-row').last().innerText();
  assert.match(shown, /flood \d+$/);
  assert.ok(behindMs < 3000, `${behindMs} ms behind`);
  assert.ok(median < 100, `a frame takes ${median} ms`);
});

const getState = {
  payload: { cmd: 'OrvaneManager_getAppState', args: { appid: 'A.B' } },
  reply: { status: 'error', error: { code: 9999, message: 'Failed to get app state' } },
};
const register = {
  kind: 'runtimeSync',
  peer: 'tizen://api/inputdevice/registerKey',
  payload: 'XF86Red',
  reply: 'success',
  us: 90,
};

test('a message is shown with its name, time and duration, and read in full', async () => {
  const simulator = await openSimulator(scene, { preferences: { tab: 'messages' } });
  simulator.server('dev.call', { ...getState, us: 400 });
  simulator.server('dev.call', register);
  await simulator.shows('.message-row', 'api/inputdevice/registerKey');
  const row = simulator.page.locator('.message-row').first();
  assert.match(await row.innerText(), /getAppState[^]*"appid":"A\.B"[^]*failed[^]*0\.40 ms/);
  await row.click();
  const details = simulator.page.locator('.message-details');
  assert.match(await details.innerText(), /native, from page 1[^]*"code": 9999/);
  simulator.assertClean();
});

test('arguments that are no text are shown as JSON', async () => {
  const simulator = await openSimulator(scene, { preferences: { tab: 'messages' } });
  const record = {
    seq: 1,
    time_ns: nowNs(),
    context: 1,
    direction: 'fromPage',
    kind: 'widget',
    peer: 'move',
    payload: [10, 20],
    reply: true,
    us: 40,
  };
  simulator.server('dev.tell', { name: 'trace', data: [record] });
  await simulator.shows('.message-row', '[10,20]');
  await simulator.page.locator('.message-row').click();
  await simulator.shows('.message-details', /10,\s+20/);
  simulator.assertClean();
});

test('a synchronous call over the budget stands out, and the budget is set', async () => {
  const simulator = await openSimulator(scene, { preferences: { tab: 'messages' } });
  simulator.server('dev.call', { ...getState, us: 9000 });
  await simulator.shows('.message-row', 'getAppState');
  assert.equal(await simulator.page.locator('.message-row-slow').count(), 0);
  await simulator.dock.getByLabel('Budget').fill('5');
  await simulator.dock.getByLabel('Budget').press('Enter');
  await simulator.page.locator('.message-row-slow').waitFor();
  await simulator.page.reload();
  await simulator.page.locator('.message-row-slow').waitFor();
});

test('messages are filtered, exported and cleared', async () => {
  const simulator = await openSimulator(scene, { preferences: { tab: 'messages' } });
  simulator.server('dev.call', { ...getState, us: 400 });
  simulator.server('dev.call', register);
  await simulator.shows('.toolbar-count', '2 of 2 messages');
  await simulator.dock.getByLabel('Which messages').selectOption('runtime');
  await simulator.shows('.toolbar-count', '1 of 2 messages');
  await simulator.dock.getByLabel('Which messages').selectOption('failed');
  await simulator.shows('.message-row', 'getAppState');
  const save = () => simulator.dock.getByLabel('Export the session as JSON').click();
  const { name, text } = await simulator.downloaded(save);
  assert.match(name, /^session-.*\.json$/);
  assert.equal(JSON.parse(text).orvane, 1);
  assert.equal(JSON.parse(text).records.length, 2);
  await simulator.dock.getByLabel('Clear the messages').click();
  await simulator.shows('.empty', 'No message yet');
});

test('recorded labels are a timeline with the gaps between them, and exported', async () => {
  const simulator = await openSimulator(scene, { preferences: { tab: 'profiling' } });
  await simulator.shows('.empty', 'No label recorded yet');
  const start = nowNs();
  const mark = (label, elapsed, ms) =>
    simulator.server('dev.mark', {
      text: `orvane.RecordProfiling with [OrvaneTour.Tour] [${elapsed}][${label}]`,
      time_ns: start + ms * 1e6,
    });
  mark('launch', '0.000', 0);
  mark('layout', '0.250', 250);
  mark('first picture', '0.750', 1000);
  await simulator.shows('.timeline-rows li', 'first picture');
  const rows = await simulator.page.locator('.timeline-rows li').allInnerTexts();
  assert.match(rows[1], /layout\s+\+250 ms/);
  assert.match(rows[2], /first picture\s+\+750 ms\s+1\.00 s/);
  const save = () => simulator.dock.getByLabel('Export every record as JSON').click();
  const { runs } = JSON.parse((await simulator.downloaded(save)).text);
  assert.deepEqual(
    runs[0].map((point) => [point.label, point.gapMs && Math.round(point.gapMs)]),
    [
      ['launch', null],
      ['layout', 250],
      ['first picture', 750],
    ]
  );
});

test('resources are sampled while their panel is open, and only then', async () => {
  const simulator = await openSimulator(scene);
  const sampled = () => simulator.called('stat.read').length;
  await simulator.page.clock.install();
  await simulator.tab('resources');
  await until(async () => {
    await simulator.page.clock.runFor(1000);
    return sampled() >= 6;
  }, 'three samples');
  await simulator.page.locator('.chart-room canvas').nth(1).waitFor();
  await simulator.tab('log');
  await simulator.page.locator('.chart-room').first().waitFor({ state: 'detached' });
  const before = sampled();
  await simulator.page.clock.runFor(30000);
  simulator.server('log.write', { text: 'the end' });
  await simulator.shows('.log-row', 'the end');
  assert.ok(sampled() <= before + 2, `${sampled()} after ${before}`); // one was under way
  simulator.assertClean();
});

test('the console of the pages is shown by level', async () => {
  const simulator = await openSimulator(scene, { preferences: { tab: 'console' } });
  const entry = { level: 'log', text: 'hello', context: 1, time_ns: nowNs(), where: 'a.js:1:2' };
  simulator.server('dev.tell', { name: 'console', data: entry });
  simulator.server('dev.tell', {
    name: 'console',
    data: { ...entry, level: 'error', text: 'no!' },
  });
  await simulator.shows('.console-error', 'no!');
  await simulator.shows('.console-log', 'a.js:1:2');
  await simulator.dock.getByLabel('Level').selectOption('error');
  await simulator.page.locator('.console-log').waitFor({ state: 'detached' });
});

test('problems of config.xml and refusals are listed with their causes', async () => {
  const simulator = await openSimulator(scene, { preferences: { tab: 'problems' } });
  await simulator.shows('.problem', /<tizen:privilege>: the name has a blank[^]*config\.xml:9/);
  const text = 'setAuxHint was refused: the privilege is missing; add it to config.xml';
  simulator.server('dev.tell', { name: 'explain', data: { text, context: 1, time_ns: nowNs() } });
  await simulator.shows('.problem', text);
  await simulator.shows('#tab-problems .tab-number', '2');
});
