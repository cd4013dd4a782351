// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What becomes of a page when its connection, its instance or its server goes, and when it goes
// itself.

import assert from 'node:assert/strict';
import test from 'node:test';

import { linked, openFake } from './support/fake_runtime.mjs';
import { until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';

const scene = makeScene();

function listen() {
  window.seen = [];
  dravelt.echo.listen((text) => window.seen.push(text));
}

async function post(context, from, to) {
  for (let number = from; number < to; number += 1) {
    context.send({ type: 'posted', extension: 'dravelt.echo', body: String(number) });
  }
}

for (const isolated of [true, false]) {
  const kind = isolated ? 'with a worker' : 'without a worker';

  test(`no posted message is missed or doubled when the socket breaks, ${kind}`, async () => {
    const { runtime, page } = await openFake(scene, { isolated });
    await until(() => runtime.context.socket, 'the socket');
    await page.evaluate(listen);
    const { context } = runtime;
    await post(context, 0, 20);
    await page.waitForFunction(() => window.seen.length >= 10);
    runtime.dropSockets();
    await post(context, 20, 40);
    await page.waitForFunction(() => window.seen.length >= 40);
    runtime.dropSockets();
    await post(context, 40, 60);
    await page.waitForFunction(() => window.seen.length >= 60);
    const expected = Array.from({ length: 60 }, (_, number) => String(number));
    assert.deepEqual(await page.evaluate(() => window.seen), expected);
  });
}

test('messages are acknowledged', async () => {
  const { runtime, page } = await openFake(scene);
  await until(() => runtime.context.socket, 'the socket');
  await page.evaluate(listen);
  await post(runtime.context, 0, 5);
  await until(() => runtime.of('ack').some(({ seq }) => seq >= 5), 'an acknowledgement');
});

test('a post that a broken socket swallowed arrives, once', async () => {
  const { runtime, page } = await openFake(scene);
  await linked(runtime, page);
  runtime.acceptSockets = false;
  runtime.dropSockets();
  await page.evaluate(() => ['a', 'b', 'c'].forEach((text) => dravelt.echo.post(text)));
  runtime.acceptSockets = true;
  await until(() => runtime.of('post').length === 3, 'the posts');
  assert.deepEqual(
    runtime.of('post').map(({ text }) => text),
    ['a', 'b', 'c']
  );
});

test('a call whose answer was lost with the socket gets it after the next connection', async () => {
  const { runtime, page } = await openFake(scene);
  await linked(runtime, page);
  runtime.answer = (message, context) => {
    if (message.type === 'sync') {
      context.socket.terminate();
    }
    return message.text ?? null;
  };
  assert.equal(await page.evaluate(() => dravelt.echo.send('kept')), 'kept');
});

test('a call fails within seconds when the server has gone', async () => {
  const { runtime, page } = await openFake(scene);
  await linked(runtime, page);
  runtime.acceptSockets = false;
  runtime.dropSockets();
  const message = await page.evaluate(() => {
    try {
      return dravelt.echo.send('x');
    } catch (error) {
      return error.message;
    }
  });
  assert.match(message, /connection to the runtime is lost/);
});

test('a restart fails the calls in flight, and later calls go on', async () => {
  const { runtime, page } = await openFake(scene);
  await linked(runtime, page);
  runtime.answer = (message) => (message.type === 'sync' ? '{}' : undefined);
  await page.evaluate(() => {
    window.failed = [];
    dravelt.echo.native.call('Slow_call', {}, (reply) => window.failed.push(reply));
    dravelt.echo.runtime.sendRuntimeAsyncMessage('dravelt://orvane/x', '', (text) =>
      window.failed.push(JSON.parse(text))
    );
    dravelt.echo.native.addListener('stays', ({ value }) => window.failed.push(value));
  });
  await until(() => runtime.of('runtime').length === 1, 'the runtime message');
  runtime.context.send({ type: 'restarted' });
  await page.waitForFunction(() => window.failed.length === 2);
  const replies = await page.evaluate(() => window.failed);
  assert.ok(replies.every(({ status, error }) => status === 'error' && error.code === 9999));
  assert.ok(replies.some(({ error }) => error.message.includes('dravelt://orvane/x')));

  const text = JSON.stringify({ listenerId: 'stays', value: 'listening' });
  runtime.context.send({ type: 'posted', extension: 'dravelt.echo', body: text });
  await page.waitForFunction(() => window.failed.at(-1) === 'listening');
  runtime.answer = (message) => message.text ?? null;
  assert.equal(await page.evaluate(() => dravelt.echo.send('again')), 'again');
});

test('a page that goes says so, and each load is a context of its own', async () => {
  const { runtime, page } = await openFake(scene);
  await page.reload();
  await until(() => runtime.byes.length === 1, 'the first page to say that it goes');
  assert.deepEqual(runtime.byes, [1]);
  assert.equal(runtime.contexts.length, 2);
});

test('a page that the browser kept and shows again starts anew', async () => {
  const { runtime, page } = await openFake(scene);
  await page.evaluate(() =>
    window.dispatchEvent(new PageTransitionEvent('pageshow', { persisted: true }))
  );
  await until(() => runtime.contexts.length === 2, 'the page to load again');
});

test('the server can have the page loaded again', async () => {
  const { runtime } = await openFake(scene);
  await until(() => runtime.context.socket, 'the socket');
  runtime.context.send({ type: 'reload' });
  await until(() => runtime.contexts.length === 2, 'the page to load again');
});

test('a page whose context the server has forgotten loads again', async () => {
  const { runtime } = await openFake(scene);
  await until(() => runtime.context.socket, 'the socket');
  runtime.context.socket.send(JSON.stringify({ type: 'gone' }));
  await until(() => runtime.contexts.length === 2, 'the page to load again');
});

test('a frame of the same origin has its own context', async () => {
  const { runtime, page } = await openFake(scene, {
    html: (pathname) =>
      pathname === '/inner'
        ? '<!DOCTYPE html><script>window.inner = dravelt.echo.send("inner")</script>'
        : '<!DOCTYPE html><body><iframe src="/inner"></iframe></body>',
  });
  await page.evaluate(() => dravelt.echo.send('outer'));
  assert.equal(await page.frames()[1].evaluate(() => window.inner), 'inner');
  const [inner, outer] = ['inner', 'outer'].map((sent) =>
    runtime.messages.find(({ text }) => text === sent)
  );
  assert.notEqual(inner.context, outer.context);
  await until(() => runtime.of('state').some(({ top }) => !top), 'the state of the frame');
  const tops = runtime.of('state').filter(({ top }) => top);
  assert.ok(tops.every(({ context }) => context === outer.context));
});

test('a document that the page opens anew keeps the object and the reports', async () => {
  const { runtime, page } = await openFake(scene);
  await page.evaluate(() => {
    document.open();
    document.write('<title>opened</title><input id="field">');
    document.close();
  });
  assert.equal(await page.evaluate(() => dravelt.echo.send('open')), 'open');
  await page.focus('#field');
  await until(() => runtime.of('state').some(({ editing }) => editing), 'the report of the focus');
  await page.reload();
  await until(() => runtime.byes.length === 1, 'the page to say that it goes');
});
