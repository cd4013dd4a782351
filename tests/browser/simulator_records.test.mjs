// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The simulator's panels below the television: log, messages, profiling, resources, console and
// problems.

import assert from 'node:assert/strict';
import test from 'node:test';

import { duration } from '../../simulator/src/ui/format.js';
import { until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';
import { openSimulator } from './support/simulator.mjs';

const scene = makeScene();

const asError = { priority: 6, tag: 'WEBAPI_PLUGINS' };

/** The simulator with an empty log. */
async function openLog() {
  const simulator = await openSimulator(scene);
  await simulator.clearLog();
  return simulator;
}

/** The simulator with no message in its panel. */
async function openMessages(preferences) {
  const simulator = await openSimulator(scene, {
    preferences: { tab: 'messages', ...preferences },
  });
  await simulator.clearMessages();
  return simulator;
}

test('lines appear as they are written, and are filtered', async () => {
  const simulator = await openLog();
  await simulator.write('Enter', { count: 30 });
  await simulator.write('it failed', asError);
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
  const simulator = await openLog();
  await simulator.write('a line', { count: 5 });
  await simulator.shows('.toolbar-count', '5 of 5');
  await simulator.dock.getByLabel('Pause').click();
  await simulator.write('a line', { count: 7 });
  await simulator.shows('.toolbar-count', '7 new · 5 of 12 lines');
  await simulator.dock.getByLabel('Go on').click();
  await simulator.shows('.toolbar-count', '12 of 12 lines');
});

test('a paused log is filtered as it was, and can be cleared', async () => {
  const simulator = await openLog();
  await simulator.write('a line', { count: 20 });
  await simulator.shows('.toolbar-count', '20 of 20');
  await simulator.dock.getByLabel('Pause').click();
  await simulator.write('a line', { count: 20 });
  await simulator.dock.getByLabel('Text').fill('line 1');
  await simulator.shows('.toolbar-count', '20 new · 11 of 40 lines');
  await simulator.dock.getByLabel('Text').fill('');
  await simulator.shows('.toolbar-count', '20 new · 20 of 40 lines');
  await simulator.dock.getByLabel('Clear the log').click();
  await simulator.shows('.empty', 'No line yet');
  await simulator.write('a line', { count: 50 });
  await simulator.shows('.toolbar-count', '50 of 50 lines');
});

test('filter and pause stay while another panel is open', async () => {
  const simulator = await openLog();
  await simulator.write('a line', { count: 5 });
  await simulator.dock.getByLabel('Text').fill('line 3');
  await simulator.dock.getByLabel('Pause').click();
  await simulator.tab('messages');
  await simulator.write('a line', { count: 5 });
  await simulator.tab('log');
  await simulator.shows('.toolbar-count', '5 new · 1 of 10 lines');
});

test('a line that is being read is not scrolled away', async () => {
  const simulator = await openLog();
  await simulator.write('a line', { count: 300 });
  await simulator.shows('.log-row', 'a line 299');
  await simulator.page.locator('.log-row', { hasText: 'a line 297' }).click();
  await simulator.write('more', { count: 300 });
  await simulator.shows('.toolbar-count', '600 of 600');
  await simulator.page.locator('.log-row', { hasText: 'a line 297' }).waitFor();
  await simulator.dock.getByLabel('Keep the newest in sight').click();
  await simulator.shows('.log-row', 'more 299');
});

test('the lines shown are saved, and the log is cleared', async () => {
  const simulator = await openLog();
  await simulator.write('Enter', { count: 3 });
  await simulator.shows('.toolbar-count', '3 of 3');
  const save = () => simulator.dock.getByLabel('Save the lines shown').click();
  const { name, text } = await simulator.downloaded(save);
  assert.match(name, /^log-\d{8}-\d{6}\.txt$/);
  assert.match(text, /^[\d:.]{12} I\/QM_WEBAPI \(P *\d+, T *\d+\): Enter 0\n/);
  assert.equal(text.split('\n').length, 4);
  await simulator.dock.getByLabel('Clear the log').click();
  await simulator.shows('.empty', 'No line yet');
});

test('a line is read in full, with the keyboard too', async () => {
  const simulator = await openLog();
  await simulator.write(`first ${'long '.repeat(200)}end`);
  await simulator.write('it failed', asError);
  await simulator.shows('.toolbar-count', '2 of 2');
  await simulator.page.focus('.virtual-list');
  await simulator.page.keyboard.press('ArrowUp');
  await simulator.shows('.log-selected', 'it failed');
  await simulator.page.keyboard.press('ArrowUp');
  await simulator.shows('.log-selected', 'long end');
  await simulator.page.keyboard.press('Escape');
  await simulator.page.locator('.log-selected').waitFor({ state: 'detached' });
});

test('of thirty thousand lines that come at once none is dropped', async () => {
  const simulator = await openLog();
  for (let batch = 0; batch < 6; ++batch) {
    await simulator.call('debug.log', { tag: 'QM_WEBAPI', text: 'flood', count: 5000 });
  }
  await simulator.write('the last');
  await simulator.shows('.toolbar-count', '30,001 of 30,001 lines');
  assert.match(await simulator.page.locator('.log-row').last().innerText(), /the last$/);
});

/** What the application's page asks: a call that is refused, and a key. */
function askForState(body, id) {
  try {
    return dravelt.orvane.getAppState(id);
  } catch (refusal) {
    return refusal.message;
  }
}
const registerKey = () => dravelt.orvane.registerKey(['ColorF0Red']);

test('a message is shown with its name, time and duration, and read in full', async () => {
  const simulator = await openMessages();
  await simulator.inApp(askForState, 'A.B');
  await simulator.inApp(registerKey);
  await simulator.shows('.message-row', 'api/inputdevice/registerKey');
  const row = simulator.page.locator('.message-row').first();
  assert.match(await row.innerText(), /getAppState[^]*"appid":"A\.B"[^]*failed[^]*\d ms/);
  await row.click();
  const details = simulator.page.locator('.message-details');
  assert.match(await details.innerText(), /native, from page \d+[^]*"code": \d+/);
  simulator.assertClean();
});

test('arguments that are no text are shown as JSON', async () => {
  const simulator = await openMessages();
  await simulator.inApp(() => globalThis.widget.move(10, 20));
  await simulator.shows('.message-row', '[10,20]');
  await simulator.page.locator('.message-row').click();
  await simulator.shows('.message-details', /10,\s+20/);
  simulator.assertClean();
});

test('a synchronous call over the budget stands out, and the budget is set', async () => {
  const simulator = await openMessages({ budgetMs: 60000 });
  await simulator.inApp(askForState, 'A.B');
  await simulator.shows('.message-row', 'getAppState');
  assert.equal(await simulator.page.locator('.message-row-slow').count(), 0);
  await simulator.dock.getByLabel('Budget').fill('0');
  await simulator.dock.getByLabel('Budget').press('Enter');
  await simulator.page.locator('.message-row-slow').waitFor();
  await simulator.reload();
  await simulator.page.locator('.message-row-slow').first().waitFor();
});

test('messages are filtered, exported and cleared', async () => {
  const simulator = await openMessages();
  await simulator.inApp(askForState, 'A.B');
  await simulator.inApp(registerKey);
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
  const labels = ['launch', 'layout', 'first picture'];
  await simulator.inApp(async (body, all) => {
    for (const label of all) {
      await new Promise((resolve, reject) => {
        dravelt.orvane.recordProfiling(label, resolve, reject);
      });
    }
  }, labels);
  await simulator.shows('.timeline-rows li', 'first picture');
  const save = () => simulator.dock.getByLabel('Export every record as JSON').click();
  const { runs } = JSON.parse((await simulator.downloaded(save)).text);
  assert.deepEqual(
    runs[0].map((point) => point.label),
    labels
  );
  const rows = await simulator.page.locator('.timeline-rows li').allInnerTexts();
  runs[0].forEach(({ label, gapMs, fromStartMs }, index) => {
    const gap = gapMs === null ? 'start' : `+${duration(gapMs)}`;
    assert.deepEqual(rows[index].split(/\n+/), [label, gap, duration(fromStartMs)]);
  });
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
  await simulator.write('the end');
  await simulator.shows('.log-row', 'the end');
  assert.ok(sampled() <= before + 2, `${sampled()} after ${before}`); // one was under way
  simulator.assertClean();
});

test('the console of the pages is shown by level', async () => {
  const simulator = await openSimulator(scene, { preferences: { tab: 'console' } });
  await simulator.inApp(() => {
    const script = document.createElement('script');
    script.src = 'greeting.js';
    document.head.append(script);
  });
  await simulator.shows('.console-error', 'no!');
  await simulator.shows('.console-error', 'greeting.js:4:7');
  await simulator.shows('.console-log', 'hello');
  await simulator.dock.getByLabel('Level').selectOption('error');
  await simulator.page.locator('.console-log').first().waitFor({ state: 'detached' });
});

test('problems of config.xml and refusals are listed with their causes', async () => {
  const simulator = await openSimulator(scene, { preferences: { tab: 'problems' } });
  await simulator.shows('.problem', /<tizen:privilige>: nothing reads[^]*config\.xml:10/);
  const refusal = await simulator.inApp(() => {
    try {
      return dravelt.orvane.setAuxHint({ key: 'x', value: 'y' });
    } catch (error) {
      return error.name;
    }
  });
  assert.equal(refusal, 'SecurityError');
  await simulator.shows('.problem', 'http://tizen.org/privilege/internal/default/platform');
  await simulator.shows('#tab-problems .tab-number', '2');
});
