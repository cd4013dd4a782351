// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the page's runtime tells the server, and how it explains what the page's policy forbids.

import assert from 'node:assert/strict';
import test from 'node:test';

import { linked, openFake } from './support/fake_runtime.mjs';
import { until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';

const scene = makeScene();

const lastState = (runtime) => runtime.of('state').at(-1);

test('the state follows the title, the address and the focus', async () => {
  const { runtime, page } = await openFake(scene, {
    html: '<!DOCTYPE html><title>One</title><body><input id="field"></body>',
  });
  await until(() => lastState(runtime)?.title === 'One', 'the title');
  assert.equal(lastState(runtime).top, true);
  await page.evaluate(() => {
    document.title = 'Two';
    history.pushState(null, '', '/detail');
  });
  await until(
    () => lastState(runtime).title === 'Two' && lastState(runtime).href.endsWith('/detail'),
    'the new title and address'
  );
  await page.focus('#field');
  await until(() => lastState(runtime).editing, 'the field');
  await page.evaluate(() => document.activeElement.blur());
  await until(() => !lastState(runtime).editing, 'the end of editing');
});

test('console lines and uncaught errors are forwarded', async () => {
  const { runtime, page } = await openFake(scene);
  await page.evaluate(() => {
    console.warn('careful', { depth: 1, list: [1, 'two'] });
    setTimeout(() => {
      throw new TypeError('not caught');
    });
    Promise.reject(new Error('rejected'));
  });
  await until(() => runtime.of('console').length >= 3, 'three lines');
  const lines = runtime.of('console').map(({ level, text }) => `${level} ${text}`);
  assert.ok(lines.includes('warn careful {depth: 1, list: [1, "two"]}'), lines.join('\n'));
  assert.ok(lines.some((line) => line.startsWith('error Uncaught TypeError: not caught')));
  assert.ok(lines.some((line) => line.startsWith('error Uncaught (in promise) Error: rejected')));
});

test('what cannot be shown on the console does no harm', async () => {
  const { runtime, page } = await openFake(scene);
  await page.evaluate(() => {
    const circle = {};
    circle.self = circle;
    console.log(circle, Object.create(null), Symbol('s'), 5n, null, undefined, document.body);
    console.log(
      new Proxy({}, { ownKeys: () => { throw new Error('trap'); } }) // prettier-ignore
    );
  });
  await until(() => runtime.of('console').length === 2, 'two lines');
  assert.deepEqual(page.problems, []);
});

test('the worker is explained when the policy forbids it, and calls still work', async () => {
  const { runtime, page } = await openFake(scene, {
    headers: { 'Content-Security-Policy': "default-src 'self'; worker-src 'none'" },
  });
  await until(() => runtime.of('explain').length > 0, 'the explanation');
  const [{ text }] = runtime.of('explain');
  assert.match(text, /worker-src.*blocks the worker.*add 'self' to worker-src/);
  assert.equal(await page.evaluate(() => window.dravelt.echo.send('slow')), 'slow');
  assert.equal(runtime.of('sync').at(-1).way, 'request');
});

test('a page that may not start a worker by its address is told what it costs', async () => {
  const { runtime, page } = await openFake(scene, {
    headers: { 'Content-Security-Policy': "require-trusted-types-for 'script'" },
  });
  await until(() => runtime.of('explain').length > 0, 'the explanation');
  assert.match(runtime.of('explain')[0].text, /synchronous calls are slow/);
  assert.equal(await page.evaluate(() => window.dravelt.echo.send('slow')), 'slow');
});

test('a policy that forbids evaluation and inline scripts is no hindrance', async () => {
  const { runtime, page } = await openFake(scene, {
    headers: {
      'Content-Security-Policy':
        "default-src 'none'; script-src 'self'; connect-src 'self'; worker-src 'self'",
    },
  });
  await linked(runtime, page);
  assert.deepEqual(runtime.of('explain'), []);
});

test('a policy that forbids every connection is explained on the console', async () => {
  const lines = [];
  const { page } = await openFake(scene);
  page.on('console', (message) => lines.push(message.text()));
  await page.evaluate(() => {
    const meta = document.createElement('meta');
    meta.httpEquiv = 'Content-Security-Policy';
    meta.content = "connect-src 'none'; worker-src 'none'";
    document.head.append(meta);
    fetch('/.orvane/sync', { method: 'POST' }).catch(() => {});
  });
  await until(() => lines.some((line) => line.includes("add 'self' to connect-src")), 'the line');
});

test('a page without a connection says so on its console, and its calls go on', async () => {
  const lines = [];
  const { runtime, page } = await openFake(scene, {
    isolated: false,
    acceptSockets: false,
    html: '<!DOCTYPE html><script>dravelt.echo.send("one")</script>',
  });
  page.on('console', (message) => lines.push(message.text()));
  await until(
    () => lines.some((line) => line.includes('no connection to the runtime')),
    'the line'
  );
  assert.equal(await page.evaluate(() => window.dravelt.echo.send('still')), 'still');
  assert.equal(runtime.of('sync').length, 2);
});
