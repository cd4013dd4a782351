// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A page of another origin, in the same browser, can neither read nor call anything.

import assert from 'node:assert/strict';
import { createServer } from 'node:http';
import test from 'node:test';

import { makeScene } from './support/scene.mjs';

const scene = makeScene();

async function openForeign() {
  const server = createServer((request, response) => {
    response.writeHead(200, { 'Content-Type': 'text/html' });
    response.end('<!DOCTYPE html><title>Elsewhere</title><body></body>');
  });
  await new Promise((resolve) => {
    server.listen(0, '127.0.0.1', resolve);
  });
  scene.onEnd(() => {
    server.closeAllConnections();
    server.close();
  });
  return scene.open(`http://127.0.0.1:${server.address().port}/`);
}

// What a page of another origin can try, with everything but the secret; each entry says what it
// got.
async function attack({ appUrl, simulatorUrl }) {
  const app = new URL(appUrl).origin;
  const simulator = new URL(simulatorUrl).origin;
  const results = {};
  const read = async (name, address, options) => {
    try {
      const response = await fetch(address, options);
      results[name] = `read ${response.status}`;
    } catch (error) {
      results[name] = 'refused';
    }
  };
  const socket = (name, address) =>
    new Promise((resolve) => {
      const tried = new WebSocket(address);
      tried.onmessage = ({ data }) => {
        results[name] = `read ${data}`;
        resolve();
      };
      tried.onclose = () => {
        results[name] ??= 'refused';
        resolve();
      };
    });
  const script = (name, address) =>
    new Promise((resolve) => {
      const element = document.createElement('script');
      element.src = address;
      element.onload = () => {
        results[name] =
          typeof window.dravelt === 'undefined' ? 'loaded nothing' : 'read the object';
        resolve();
      };
      element.onerror = () => {
        results[name] = 'refused';
        resolve();
      };
      document.head.append(element);
    });
  await read('the page', `${app}/index.html`);
  await read('the runtime', `${app}/.orvane/page.js`);
  await read('the simulator', `${simulator}/`);
  await read('a call', `${app}/.orvane/sync?token=guess&context=1`, {
    method: 'POST',
    body: '{"type":"sync","id":1,"extension":"dravelt.orvane","text":"{}"}',
  });
  await read('the interface', `${simulator}/api/call`, {
    method: 'POST',
    body: '{"method":"state.get","params":{}}',
  });
  await script('the runtime as a script', `${app}/.orvane/page.js`);
  const [appSocket, apiSocket] = [app, simulator].map((origin) => origin.replace('http', 'ws'));
  await socket('the page’s socket', `${appSocket}/.orvane/socket?token=guess&context=1&last=0`);
  await socket('the interface’s socket', `${apiSocket}/api?token=guess`);
  return results;
}

test('another origin reads nothing and calls nothing', async () => {
  const run = await scene.run('examples/tour');
  const own = await scene.open(run.appUrl);
  await own.waitForSelector('body.complete');
  const before = (await run.call('trace.list')).records.length;
  const foreign = await openForeign();
  const results = await foreign.evaluate(attack, { appUrl: run.appUrl, simulatorUrl: run.url });
  for (const [what, result] of Object.entries(results)) {
    assert.ok(result === 'refused' || result === 'loaded nothing', `${what}: ${result}`);
  }
  assert.equal((await run.call('trace.list')).records.length, before);
});

test('another origin with the secret is refused by its origin', async () => {
  const run = await scene.run('examples/tour');
  const foreign = await openForeign();
  const { href } = new URL('/api/call', run.url);
  const answer = await foreign.evaluate(
    async ([address, token]) => {
      try {
        const response = await fetch(address, {
          method: 'POST',
          headers: { 'X-Orvane-Token': token, 'Content-Type': 'application/json' },
          body: '{"method":"state.get","params":{}}',
        });
        return response.status;
      } catch (error) {
        return 'refused';
      }
    },
    [href, run.token]
  );
  assert.equal(answer, 'refused');
});

test('another origin cannot frame the application', async () => {
  const run = await scene.run('examples/tour');
  const foreign = await openForeign();
  await foreign.evaluate((address) => {
    const frame = document.createElement('iframe');
    frame.src = address;
    document.body.append(frame);
    return new Promise((resolve) => {
      frame.onload = resolve;
    });
  }, run.appUrl);
  const [, frame] = foreign.frames();
  assert.equal(await frame.evaluate(() => typeof window.dravelt), 'undefined');
});
