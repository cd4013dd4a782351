// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The simulator's page as a whole: its secret, its start, losses, themes, and who can use it.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import test from 'node:test';

import { startMock } from '../../simulator/dev/mock_server.mjs';
import { makeScene } from './support/scene.mjs';
import { openSimulator } from './support/simulator.mjs';

const scene = makeScene();
const axe = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

test('the secret leaves the address, and outlives a reload', async () => {
  const simulator = await openSimulator(scene);
  assert.doesNotMatch(simulator.page.url(), /token/);
  await simulator.page.reload();
  await simulator.page.locator('.remote-body .key').first().waitFor();
  simulator.assertClean();
});

test('without the secret the page says where to get it', async () => {
  const { mock } = await openSimulator(scene);
  const page = await scene.open(`${mock.url}x`);
  await page.getByText('Open the link that it printed').waitFor();
});

test('the first paint comes within a second', async (t) => {
  const { page } = await openSimulator(scene);
  const painted = await page.evaluate(
    () => performance.getEntriesByName('first-contentful-paint')[0].startTime
  );
  t.diagnostic(`first paint after ${painted.toFixed(0)} ms`);
  assert.ok(painted < 1000, `${painted} ms`);
});

const death = {
  time_ns: 1.7e18,
  signal: 6,
  exit: 0,
  reason: 'it was killed by signal 6 (Aborted)',
  handling: {
    what: 'sync',
    context: 1,
    name: 'dravelt.orvane',
    text: '{"cmd":"OrvaneManager_getAppState","args":{}}',
  },
  stderr: 'assert(is<std::string>())',
};

test('when the library dies the page says of what, and starts it again', async () => {
  const simulator = await openSimulator(scene);
  simulator.server('dev.process', { state: 'down', pid: 0, deaths: [death] });
  await simulator.shows('.banner', 'ended while it handled getAppState');
  await simulator.shows('.banner', 'it was killed by signal 6 (Aborted)');
  await simulator.shows('.banner', '"OrvaneManager_getAppState"');
  await simulator.page.click('.banner summary');
  await simulator.shows('.banner pre', 'assert(is<std::string>())');
  await simulator.shows('.top-chips', 'Library down');
  await simulator.page.click('.banner >> text=Restart');
  await simulator.waitForCall('process.restart');
  await simulator.shows('.banner', 'started again with the state of the set');
  await simulator.page.click('.banner [aria-label="Close this notice"]');
  await simulator.page.locator('.banner').waitFor({ state: 'detached' });
});

test('a page in which the runtime has no script is explained', async () => {
  const simulator = await openSimulator(scene);
  const [page] = simulator.server('pages.list');
  const blocked = { ...page, runtime: 'noScript', isolated: false };
  simulator.server('dev.tell', { name: 'pages', data: [blocked] });
  await simulator.shows('.banner', "No script ran because of the page's content policy");
});

test('after a loss of the connection everything that was missed is there, once', async () => {
  const simulator = await openSimulator(scene);
  simulator.server('log.write', { count: 10 });
  await simulator.shows('.toolbar-count', '10 of 10');
  simulator.mock.dropSockets();
  simulator.server('log.write', { count: 90 });
  await simulator.shows('.toolbar-count', '100 of 100 lines');
  await simulator.shows('.top-chips', 'Library running');
});

test('a lost connection is told, and what is asked meanwhile is answered with that', async () => {
  const simulator = await openSimulator(scene);
  await simulator.mock.close();
  await simulator.shows('.banner', 'The connection to orvane run was lost');
  await simulator.page.click('[data-key=XF86Red]');
  await simulator.shows('.toast-error', 'no connection');
});

test('a tab of a run that ended belongs to no later run at its address', async () => {
  const simulator = await openSimulator(scene);
  const { port } = new URL(simulator.mock.url);
  await simulator.mock.close();
  await simulator.shows('.banner', 'The connection to orvane run was lost');
  const later = await startMock({ port: Number(port), token: 'another' });
  scene.onEnd(() => later.close());
  await simulator.page.getByText('This tab does not belong to this run').waitFor();
});

test('the theme follows the system, or the person', async () => {
  const simulator = await openSimulator(scene, { colorScheme: 'dark' });
  const colour = () =>
    simulator.page.evaluate(() => getComputedStyle(document.body).backgroundColor);
  assert.equal(await colour(), 'rgb(14, 16, 21)');
  await simulator.page.click('[aria-label=Theme] [aria-label=Light]');
  assert.equal(await colour(), 'rgb(238, 240, 244)');
  await simulator.page.reload();
  assert.equal(await colour(), 'rgb(238, 240, 244)');
});

test('areas are resized and hidden with the keyboard, and stay so', async () => {
  const simulator = await openSimulator(scene);
  const height = async () => (await simulator.dock.boundingBox()).height;
  const before = await height();
  await simulator.page.focus('.splitter-y');
  await simulator.page.keyboard.press('ArrowUp');
  await simulator.page.keyboard.press('ArrowUp');
  assert.equal(await height(), before + 40);
  await simulator.page.click('[aria-label="Panel of the set"]');
  await simulator.page.locator('.set-panel').waitFor({ state: 'detached' });
  await simulator.page.reload();
  await simulator.page.locator('.remote-body .key').first().waitFor();
  assert.equal(await simulator.page.locator('.set-panel').count(), 0);
  assert.equal(await height(), before + 40);
});

test('with Tab alone every area is reached, and what has the focus is seen', async () => {
  const simulator = await openSimulator(scene);
  const reached = new Set();
  const unseen = [];
  for (let step = 0; step < 160; ++step) {
    await simulator.page.keyboard.press('Tab');
    const at = await simulator.page.evaluate(() => {
      const element = document.activeElement;
      const area = element.closest('.top-bar, .remote, .stage, .dock, .set-panel');
      const { outlineStyle } = getComputedStyle(element);
      return {
        area: area?.className,
        seen: outlineStyle !== 'none' || element.tagName === 'IFRAME' || element === document.body,
        name: `${element.tagName} ${element.className}`,
      };
    });
    reached.add(at.area);
    if (!at.seen) {
      unseen.push(at.name);
    }
  }
  for (const area of ['top-bar', 'remote', 'stage', 'dock', 'set-panel']) {
    assert.ok(reached.has(area), `${area} was not reached`);
  }
  assert.deepEqual(unseen, []);
});

/** What a panel has when it is filled. */
const contents = {
  log: '.log-row',
  messages: '.message-row',
  profiling: '.timeline-rows li',
  resources: '.figure canvas',
  console: '.console-row',
  problems: '.problem',
};

for (const colorScheme of ['light', 'dark']) {
  for (const tab of ['log', 'messages', 'profiling', 'resources', 'console', 'problems']) {
    test(`nothing hinders anybody in the ${tab} panel (${colorScheme})`, async () => {
      const simulator = await openSimulator(scene, { colorScheme, preferences: { tab } });
      fill(simulator);
      await simulator.page.locator('.press').first().waitFor();
      await simulator.page.locator(contents[tab]).first().waitFor();
      assert.deepEqual(await hindrances(simulator.page), []);
    });
  }
}

for (const colorScheme of ['light', 'dark']) {
  test(`nothing hinders anybody in what is opened (${colorScheme})`, async () => {
    const simulator = await openSimulator(scene, { colorScheme });
    const { page } = simulator;
    fill(simulator);
    await page.click('.all-keys summary');
    await page.locator('.key-list .key').first().waitFor();
    await page.locator('.application summary').first().click();
    await page.locator('.log-row').first().click();
    assert.deepEqual(await hindrances(page), []);
    await simulator.tab('messages');
    await page.locator('.message-row').first().click();
    await page.locator('.message-details').waitFor();
    assert.deepEqual(await hindrances(page), []);
  });
}

test('the page fits its window, and stays where it is when a part is looked for', async () => {
  const { page } = await openSimulator(scene, { viewport: { width: 1366, height: 768 } });
  const moved = () =>
    page.evaluate(() => [
      document.documentElement.scrollTop,
      document.querySelector('.app').scrollTop,
    ]);
  for (const selector of ['.splitter-x', '.set-section:last-child button', '.key-history']) {
    await page
      .locator(selector)
      .last()
      .evaluate((element) => element.scrollIntoView());
  }
  assert.deepEqual(await moved(), [0, 0]);
});

test('in a small window everything is reached by scrolling', async () => {
  const { page } = await openSimulator(scene, { viewport: { width: 800, height: 400 } });
  const theme = page.locator('[aria-label=Theme] [aria-label=Dark]');
  await page.mouse.move(400, 20); // over nothing that scrolls itself
  await page.mouse.wheel(600, 300);
  await page.waitForFunction(() => window.scrollX > 0 && window.scrollY > 0);
  const { x, width } = await theme.boundingBox();
  assert.ok(x + width <= 800, `${x}`);
  const dock = await page.locator('.dock').boundingBox();
  assert.ok(dock.y + dock.height <= 400, `${dock.y + dock.height}`);
  const television = await page.locator('.television').boundingBox();
  assert.ok(television.height > 150, `${television.height}`);
});

for (const colorScheme of ['light', 'dark']) {
  test(`nothing hinders anybody in what lies over the page (${colorScheme})`, async () => {
    const simulator = await openSimulator(scene, { colorScheme });
    const { page } = simulator;
    await page.click('.status-actions [aria-label="On-screen keyboard"]');
    await page.locator('.ime').waitFor();
    simulator.server('keys.press', { name: 'XF86AudioMute' });
    await page.locator('.volume-bar').waitFor();
    assert.deepEqual(await hindrances(page), []);
    simulator.server('dev.process', { state: 'down', pid: 0, deaths: [death] });
    simulator.server('applications.setState', { id: 'OrvaneTour.Tour', state: 'BACKGROUND' });
    await page.click('.status-actions [aria-label="Save a picture of the screen"]');
    await page.locator('.toast-error').waitFor();
    await page.locator('.curtain').waitFor();
    assert.deepEqual(await hindrances(page), []);
    await page.click('[aria-label="Keyboard shortcuts"]');
    await page.locator('dialog').waitFor();
    assert.deepEqual(await hindrances(page), []);
  });
}

/** What axe finds, as "rule: elements". */
async function hindrances(page) {
  await page.evaluate(axe);
  const { violations } = await page.evaluate(() =>
    window.axe.run(document, {
      iframes: false,
      runOnly: ['wcag2a', 'wcag2aa', 'wcag21a', 'wcag21aa', 'wcag22aa', 'best-practice'],
    })
  );
  return violations.map(
    ({ id, nodes }) => `${id}: ${nodes.map((node) => node.target.join(' ')).join(' | ')}`
  );
}

function fill(simulator) {
  for (const [letter, priority] of Object.entries({ V: 2, D: 3, I: 4, W: 5, E: 6 })) {
    simulator.server('log.write', { letter, priority, text: 'a line' });
  }
  const payload = { cmd: 'OrvaneManager_getVersion', args: {} };
  simulator.server('dev.call', { payload, reply: { status: 'success', result: '3.9' }, us: 50000 });
  simulator.server('dev.call', { payload, reply: { status: 'error' }, us: 100 });
  for (const [label, elapsed] of Object.entries({ one: '0.000', two: '0.200' })) {
    const text = `orvane.RecordProfiling with [OrvaneTour.Tour] [${elapsed}][${label}]`;
    simulator.server('dev.mark', { text });
  }
  for (const level of ['debug', 'log', 'warn', 'error']) {
    const data = { level, text: 'hello', context: 1, time_ns: Date.now() * 1e6 };
    simulator.server('dev.tell', { name: 'console', data });
  }
  simulator.server('keys.press', { name: 'XF86Red' });
  simulator.server('keys.press', { name: 'XF86Blue' });
}
