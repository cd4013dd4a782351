// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What a page gets from a real server and a real library.

import assert from 'node:assert/strict';
import { createServer } from 'node:http';
import path from 'node:path';
import test from 'node:test';

import { buildFolder, until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';

const scene = makeScene();

async function instancesOf(run) {
  return (await run.call('pages.list')).filter(({ instances }) => instances.length > 0);
}

test('frames of the application have the object too, before their first script', async () => {
  const run = await scene.run('tests/browser/apps/frames');
  const page = await scene.open(run.appUrl);
  assert.equal(await page.evaluate(() => window.own), '3.9');
  assert.equal(await page.frames()[1].evaluate(() => window.own), 'FOREGROUND');
  assert.equal((await instancesOf(run)).length, 2);
});

test('the page is isolated, and its calls go over the worker', async () => {
  const run = await scene.run('examples/tour');
  const page = await scene.open(run.appUrl);
  assert.equal(await page.evaluate(() => window.crossOriginIsolated), true);
  await until(async () => {
    const before = await page.evaluate(() => performance.getEntriesByType('resource').length);
    const after = await page.evaluate(() => {
      window.dravelt.orvane.getAppState();
      return performance.getEntriesByType('resource').length;
    });
    return before === after;
  }, 'a call without a request');
});

for (const isolated of [true, false]) {
  const kind = isolated ? 'over the worker' : 'over requests';
  test(`bytes go to an extension and come back as they are, ${kind}`, async () => {
    const echo = path.join(buildFolder, 'lib/test-extensions/libecho.so');
    const args = ['--extension', echo, ...(isolated ? [] : ['--no-isolation'])];
    const run = await scene.run('tests/browser/apps/frames', { args });
    const page = await scene.open(run.appUrl);
    const received = await page.evaluate(async () => {
      const bytes = Uint8Array.from({ length: 100_000 }, (_, index) => index * 7);
      const messages = [];
      const all = new Promise((resolve) => {
        window.test.echo.setListener((message) => {
          messages.push(message);
          if (messages.length === 4) {
            resolve();
          }
        });
      });
      window.test.echo.post(bytes.buffer);
      window.test.echo.post(bytes.subarray(2, 5));
      window.test.echo.post('text');
      window.test.echo.post(new ArrayBuffer(0));
      await all;
      return messages.map((message) =>
        message instanceof ArrayBuffer ? Array.from(new Uint8Array(message)) : message
      );
    });
    const whole = Array.from(Uint8Array.from({ length: 100_000 }, (_, index) => index * 7));
    assert.deepEqual(received, [whole, [14, 21, 28], 'text', []]);
    const { records } = await run.call('trace.list');
    const binary = records.filter(({ kind: traced }) => traced === 'nativeBinary');
    assert.equal(binary.length, 6);
    assert.equal(binary.filter(({ direction }) => direction === 'fromPage')[1].payload, 'DhUc');
  });
}

// A frame of another site in the page; what it shows.
async function showOther(page, address) {
  await page.evaluate((src) => {
    const frame = document.createElement('iframe');
    frame.src = src;
    document.body.append(frame);
    return new Promise((resolve) => {
      frame.onload = resolve;
    });
  }, address);
  return page
    .frames()
    .at(-1)
    .evaluate(() => document.body.textContent);
}

test('a frame of another site is kept out with an explanation, or shown on demand', async () => {
  const other = createServer((request, response) => {
    response.writeHead(200, { 'Content-Type': 'text/html' }).end('<body>Elsewhere</body>');
  });
  await new Promise((resolve) => {
    other.listen(0, '127.0.0.1', resolve);
  });
  scene.onEnd(() => {
    other.closeAllConnections();
    other.close();
  });
  const address = `http://127.0.0.1:${other.address().port}/`;
  const app = 'tests/browser/apps/frames';

  const isolated = await scene.run(app);
  assert.doesNotMatch(await showOther(await scene.open(isolated.appUrl), address), /Elsewhere/);
  const explained = await until(
    async () => (await isolated.call('explain.list')).find(({ text }) => text.includes(address)),
    'the explanation'
  );
  assert.match(explained.text, /--no-isolation/);

  const open = await scene.run(app, { args: ['--no-isolation'] });
  const page = await scene.open(open.appUrl);
  assert.equal(await showOther(page, address), 'Elsewhere');
  assert.equal(await page.evaluate(() => window.own), '3.9');
});

test('a strict content policy of the page is no hindrance', async () => {
  const run = await scene.run('tests/browser/apps/policy');
  const page = await scene.open(run.appUrl);
  assert.equal(await page.evaluate(() => window.version), '3.9');
  assert.equal(await page.evaluate(() => window.dravelt.orvane.getAppState()), 'FOREGROUND');
  assert.deepEqual(await run.call('explain.list'), []);
});

test('a reload destroys the instance and makes a new one', async () => {
  const run = await scene.run('tests/browser/apps/frames');
  const page = await scene.open(run.appUrl);
  const before = (await instancesOf(run)).map(({ context }) => context);
  await page.reload();
  await until(async () => {
    const now = (await instancesOf(run)).map(({ context }) => context);
    return now.length === 2 && now.every((context) => !before.includes(context));
  }, 'new instances in place of the old');
});

test('a browser that vanishes leaves no instance behind', async () => {
  const run = await scene.run('tests/browser/apps/frames');
  const page = await scene.open(run.appUrl);
  await until(
    async () => (await instancesOf(run)).filter(({ isolated }) => isolated).length === 2,
    'the sockets of both pages'
  );
  // Without the beacon, as when the browser is killed.
  await page.route('**/.orvane/bye*', (route) => route.abort());
  await page.context().close();
  await until(async () => (await instancesOf(run)).length === 0, 'the end of the instances');
});

test('a page loads again when the server has been started again', async () => {
  const first = await scene.run('tests/browser/apps/frames');
  const page = await scene.open(first.appUrl);
  await until(async () => (await instancesOf(first)).every(({ isolated }) => isolated), 'sockets');
  await page.evaluate(() => {
    window.isOld = true;
  });
  await first.stop();
  const { port } = new URL(first.appUrl);
  const second = await scene.run('tests/browser/apps/frames', { port });
  await page.waitForFunction(() => !window.isOld && window.own === '3.9');
  assert.equal((await instancesOf(second)).length, 2);
});

test('two pages have an instance each, and are answered side by side', async () => {
  const run = await scene.run('examples/tour');
  const pages = [await scene.open(run.appUrl), await scene.open(run.appUrl)];
  const states = await Promise.all(
    pages.map((page) =>
      page.evaluate(() => Array.from({ length: 50 }, () => window.dravelt.orvane.getAppState()))
    )
  );
  assert.ok(states.flat().every((state) => state === 'FOREGROUND'));
  assert.equal((await instancesOf(run)).length, 2);
});
