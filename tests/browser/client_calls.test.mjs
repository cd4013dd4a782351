// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// How calls travel: over the worker and shared memory, or by blocking requests.

import assert from 'node:assert/strict';
import test from 'node:test';

import { linked, openFake } from './support/fake_runtime.mjs';
import { until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';

const scene = makeScene();

test('the object is there before the first script of the page', async () => {
  const { runtime, page } = await openFake(scene, {
    html: '<!DOCTYPE html><script>window.first = dravelt.echo.send("one")</script>',
  });
  assert.equal(await page.evaluate(() => window.first), 'one');
  assert.equal(runtime.of('sync')[0].way, 'request');
});

test('an isolated page calls over its worker', async () => {
  const { runtime, page } = await openFake(scene);
  await linked(runtime, page);
  const sent = runtime.messages.length;
  assert.equal(await page.evaluate(() => dravelt.echo.send('äöü \u{1f4fa}')), 'äöü \u{1f4fa}');
  assert.equal(runtime.messages[sent].way, 'socket');
});

test('a page that is not isolated calls by requests', async () => {
  const { runtime, page } = await openFake(scene, { isolated: false });
  await until(() => runtime.of('state').length > 0, 'the socket');
  assert.equal(await page.evaluate(() => dravelt.echo.send('plain')), 'plain');
  assert.ok(runtime.of('sync').every(({ way }) => way === 'request'));
  assert.equal(runtime.of('state')[0].way, 'socket');
});

test('an answer of a megabyte arrives whole', async () => {
  const { runtime, page } = await openFake(scene);
  await linked(runtime, page);
  const same = await page.evaluate(() => {
    const text = 'ab\u00e4\u{1f4fa}'.repeat(200_000);
    return dravelt.echo.send(text) === text;
  });
  assert.ok(same);
});

for (const isolated of [true, false]) {
  const kind = isolated ? 'over the worker' : 'over requests';
  test(`a message that is too long is refused, and the next goes on, ${kind}`, async () => {
    const { runtime, page } = await openFake(scene, { isolated });
    if (isolated) {
      await linked(runtime, page);
    }
    const results = await page.evaluate(() => {
      const long = 'ä'.repeat(9 * 1024 * 1024);
      const messageOf = (call) => {
        try {
          return call();
        } catch (error) {
          return error.message;
        }
      };
      return [
        messageOf(() => dravelt.echo.send(long)),
        messageOf(() => dravelt.echo.post(long)),
        messageOf(() => dravelt.echo.send('next')),
      ];
    });
    assert.match(results[0], /^dravelt\.echo did not answer a message: the message is longer than/);
    assert.match(results[1], /^dravelt\.echo was not sent a message: the message is longer than/);
    assert.equal(results[2], 'next');
  });
}

test('posts and calls keep their order, over both ways', async () => {
  const { runtime, page } = await openFake(scene);
  const mix = () => {
    for (let round = 0; round < 100; round += 1) {
      dravelt.echo.post(`post ${round}`);
      dravelt.echo.send(`sync ${round}`);
    }
  };
  await page.evaluate(mix);
  await linked(runtime, page);
  await page.evaluate(mix);
  const ids = runtime.messages.filter(({ id }) => id !== undefined).map(({ id }) => id);
  assert.deepEqual(
    ids,
    [...ids].sort((one, other) => one - other)
  );
  assert.equal(new Set(ids).size, ids.length);
});

test('a posted message is delivered after the script that called', async () => {
  const { runtime, page } = await openFake(scene);
  runtime.answer = (message, context) => {
    if (message.type === 'sync') {
      context.send({ type: 'posted', extension: 'dravelt.echo', body: 'posted' });
      return message.text;
    }
    return null;
  };
  await linked(runtime, page);
  const order = await page.evaluate(
    () =>
      new Promise((resolve) => {
        const seen = [];
        dravelt.echo.listen((text) => {
          seen.push(text);
          if (seen.filter((entry) => entry === 'posted').length === 2) {
            resolve(seen);
          }
        });
        seen.push(dravelt.echo.send('first'));
        Promise.resolve().then(() => seen.push('microtask'));
        seen.push(dravelt.echo.send('second'));
      })
  );
  assert.deepEqual(order, ['first', 'second', 'microtask', 'posted', 'posted']);
});

test('bytes go and come as bytes, over both ways', async () => {
  const { runtime, page } = await openFake(scene);
  const post = () => dravelt.echo.post(new Uint8Array([0, 10, 255]));
  await page.evaluate(post);
  await linked(runtime, page);
  await page.evaluate(post);
  await until(() => runtime.of('post').length === 2, 'the posts');
  assert.ok(runtime.of('post').every(({ bytes }) => bytes.join() === '0,10,255'));
  const heard = page.evaluate(
    () =>
      new Promise((resolve) => {
        dravelt.echo.listen((data) => resolve([...new Uint8Array(data)]));
      })
  );
  await page.evaluate(() => dravelt.echo.send('listening'));
  runtime.context.send({
    type: 'posted',
    extension: 'dravelt.echo',
    body: Buffer.from([10, 0, 254]),
  });
  assert.deepEqual(await heard, [10, 0, 254]);
});

test('a call that is never answered ends with an error that names it', async () => {
  const { runtime, page } = await openFake(scene, { deadlineMs: 200 });
  await linked(runtime, page);
  runtime.answer = (message) => (message.type === 'sync' ? undefined : null);
  const message = await page.evaluate(() => {
    const reply = dravelt.echo.native.callSync('OrvaneManager_getVersion', {});
    return reply.error.message;
  });
  assert.match(message, /dravelt\.echo did not answer OrvaneManager_getVersion: .* 2200 ms/);
  runtime.answer = (sent) => sent.text ?? null;
  assert.equal(await page.evaluate(() => dravelt.echo.send('next')), 'next');
});

test("the answer's error reaches the page's script", async () => {
  const { runtime, page } = await openFake(scene);
  await page.evaluate(() => dravelt.echo.send('load'));
  runtime.answer = () => {
    throw new Error('the set is asleep');
  };
  const message = await page.evaluate(() => {
    try {
      return dravelt.echo.send('x');
    } catch (error) {
      return error.message;
    }
  });
  assert.equal(message, 'the set is asleep');
});

test('a page may replace the functions that the runtime stands on', async () => {
  const { runtime, page } = await openFake(scene);
  await page.evaluate(() => {
    const nothing = () => {
      throw new Error('replaced');
    };
    for (const name of [
      'WebSocket',
      'XMLHttpRequest',
      'Worker',
      'SharedArrayBuffer',
      'setTimeout',
    ]) {
      window[name] = nothing;
    }
    JSON.parse = nothing;
    JSON.stringify = nothing;
    Atomics.load = nothing;
    performance.now = nothing;
    EventTarget.prototype.addEventListener = nothing;
    for (const { prototype } of [Object, Array]) {
      prototype.toJSON = () => 'replaced';
      prototype.error = 'replaced';
      prototype.seq = 0;
    }
  });
  const send = () => window.dravelt.echo.send('still here');
  assert.equal(await page.evaluate(send), 'still here');
  await until(async () => {
    assert.equal(await page.evaluate(send), 'still here');
    return runtime.of('sync').at(-1).way === 'socket';
  }, 'the worker to take over');
  assert.deepEqual(page.problems, []);
});

test('nothing but the platform names becomes a global', async () => {
  const { runtime, page } = await openFake(scene);
  const names = () => Object.getOwnPropertyNames(window);
  const own = await page.evaluate(names);
  await page.goto(`${runtime.url}plain`);
  const before = new Set(await page.evaluate(names));
  const added = own.filter((name) => !before.has(name)).sort();
  assert.deepEqual(added, ['WebAPIError', 'WebAPIException', 'dravelt', 'widget', 'xwalk']);
});
