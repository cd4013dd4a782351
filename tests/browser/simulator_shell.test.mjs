// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The simulator's page as a whole: its secret, its start, losses, themes, and who can use it.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import path from 'node:path';
import test from 'node:test';

import { buildFolder, until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';
import { openSimulator, quietApp, quietId } from './support/simulator.mjs';

const scene = makeScene();
const slowExtension = path.join(buildFolder, 'tests/browser/slow/libbrowser-slow-extension.so');
const axe = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

test('the secret leaves the address, and outlives a reload', async () => {
  const simulator = await openSimulator(scene);
  assert.doesNotMatch(simulator.page.url(), /token/);
  await simulator.reload();
  simulator.assertClean();
});

test('without the secret the page says where to get it', async () => {
  const { run } = await openSimulator(scene);
  const page = await scene.open(`${run.url}x`);
  await page.getByText('Open the link that it printed').waitFor();
});

/** A run that a test may end. */
const ownRun = () => scene.run(quietApp, { args: ['--test-hooks'] });

/** Ends the library's process until it is not started again. */
async function endForGood(run) {
  await until(async () => {
    await run.call('debug.crash').catch(() => {});
    return (await run.call('process.get')).state === 'down';
  }, 'the process to stay down');
}

test('when the library dies the page says of what, and starts it again', async () => {
  const run = await ownRun();
  const simulator = await openSimulator(scene, { run });
  await endForGood(run);
  await simulator.shows('.banner', 'ended while it handled debug.crash');
  await simulator.shows('.banner', 'it was killed by signal 6 (Aborted)');
  await simulator.shows('.banner', 'It ended three times within five seconds');
  await simulator.shows('.top-chips', 'Library down');
  await simulator.page.click('.banner >> text=Restart');
  await simulator.waitForCall('process.restart');
  await simulator.shows('.top-chips', 'Library running');
  await simulator.page.locator('.banner-bad').waitFor({ state: 'detached' });
});

test('a death names the message that was handled, and what was written last', async () => {
  const run = await scene.run(quietApp, {
    args: ['--extension', slowExtension, '--deadline', '60'],
  });
  const simulator = await openSimulator(scene, { run });
  const call = simulator.inApp(() => {
    try {
      return window.example.slow.wait(30000);
    } catch (error) {
      return error.message;
    }
  });
  const { pid } = await until(async () => {
    const found = await run.call('process.get');
    return found.handling?.text === '30000' && found;
  }, 'the call to reach the library');
  process.kill(pid, 'SIGKILL');
  assert.match(await call, /example\.slow/);
  await simulator.shows('.banner', 'ended while it handled example.slow');
  await simulator.shows('.banner', 'it was killed by signal 9 (Killed)');
  await simulator.shows('.banner code', '30000');
  await simulator.page.click('.banner summary');
  await simulator.shows('.banner pre', 'slow: waiting for 30000 ms');
  await simulator.shows('.banner', 'started again with the state of the set');
  await simulator.page.click('.banner [aria-label="Close this notice"]');
  await simulator.page.locator('.banner').waitFor({ state: 'detached' });
});

test('after a loss of the connection everything that was missed is there, once', async () => {
  const sockets = [];
  const simulator = await openSimulator(scene, {
    prepare: (page) =>
      page.routeWebSocket(/\/api\?/, (socket) => {
        socket.connectToServer();
        sockets.push(socket);
      }),
  });
  await simulator.clearLog();
  await simulator.write('before', { count: 10 });
  await simulator.shows('.toolbar-count', '10 of 10');
  await sockets[0].close();
  await simulator.write('meanwhile', { count: 90 });
  await simulator.shows('.toolbar-count', '100 of 100 lines');
  await simulator.shows('.top-chips', 'Library running');
});

test('a lost connection is told, and what is asked meanwhile is answered with that', async () => {
  const run = await ownRun();
  const simulator = await openSimulator(scene, { run });
  await run.stop();
  await simulator.shows('.banner', 'The connection to orvane run was lost');
  await simulator.press('XF86Red');
  await simulator.shows('.toast-error', 'no connection');
});

test('a tab of a run that ended belongs to no later run at its address', async () => {
  const run = await ownRun();
  const simulator = await openSimulator(scene, { run });
  await run.stop();
  await simulator.shows('.banner', 'The connection to orvane run was lost');
  // The simulator's port is the one after the application's.
  const later = await scene.run(quietApp, { port: new URL(run.url).port - 1 });
  assert.equal(new URL(later.url).port, new URL(run.url).port);
  await simulator.page.getByText('This tab does not belong to this run').waitFor();
});

test('the theme follows the system, or the person', async () => {
  const simulator = await openSimulator(scene, { colorScheme: 'dark' });
  const colour = () =>
    simulator.page.evaluate(() => getComputedStyle(document.body).backgroundColor);
  assert.equal(await colour(), 'rgb(14, 16, 21)');
  await simulator.page.click('[aria-label=Theme] [aria-label=Light]');
  assert.equal(await colour(), 'rgb(238, 240, 244)');
  await simulator.reload();
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
  await simulator.reload();
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
  test(`nothing hinders anybody in any panel (${colorScheme})`, async () => {
    const preferences = { budgetMs: 0 };
    const simulator = await openSimulator(scene, { colorScheme, preferences });
    await fill(simulator);
    for (const [tab, content] of Object.entries(contents)) {
      await simulator.tab(tab);
      await simulator.page.locator(content).first().waitFor();
      assert.deepEqual(await hindrances(simulator.page), [], tab);
    }
  });

  test(`nothing hinders anybody in what is opened (${colorScheme})`, async () => {
    const simulator = await openSimulator(scene, { colorScheme });
    const { page } = simulator;
    await fill(simulator);
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

  test(`nothing hinders anybody in what lies over the page (${colorScheme})`, async () => {
    const run = await ownRun();
    const simulator = await openSimulator(scene, { run, colorScheme });
    const { page } = simulator;
    await page.click('.status-actions [aria-label="On-screen keyboard"]');
    await page.locator('.ime').waitFor();
    await run.call('keys.press', { name: 'XF86AudioMute' });
    await page.locator('.volume-bar').waitFor();
    assert.deepEqual(await hindrances(page), []);
    await run.call('applications.setState', { id: quietId, state: 'BACKGROUND' });
    await page.locator('.curtain').waitFor();
    await endForGood(run);
    await page.locator('.banner').waitFor();
    await simulator.press('XF86Red');
    await page.locator('.toast-error').waitFor();
    assert.deepEqual(await hindrances(page), []);
    await page.click('[aria-label="Keyboard shortcuts"]');
    await page.locator('dialog').waitFor();
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

/** Something in every panel, and in the list of presses. */
async function fill(simulator) {
  for (const priority of [2, 3, 4, 5, 6]) {
    await simulator.write('a line', { priority });
  }
  await simulator.inApp(async () => {
    const { orvane } = dravelt;
    orvane.getVersion();
    try {
      orvane.getAppState('No.Such');
    } catch (error) {
      console.error(error.message);
    }
    for (const label of ['one', 'two']) {
      await new Promise((resolve, reject) => {
        orvane.recordProfiling(label, resolve, reject);
      });
    }
    for (const level of ['debug', 'log', 'warn', 'error']) {
      console[level]('hello');
    }
  });
  await simulator.call('keys.press', { name: 'XF86Red' });
  await simulator.call('keys.press', { name: 'XF86Blue' });
  await simulator.page.locator('.press').nth(1).waitFor();
}
