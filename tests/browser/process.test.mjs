// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The library's process dies, hangs and comes back; pages go on.

import assert from 'node:assert/strict';
import { constants } from 'node:os';
import path from 'node:path';
import test from 'node:test';

import { buildFolder, until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';

const scene = makeScene();

const app = 'tests/browser/apps/frames';
const slowExtension = path.join(buildFolder, 'tests/browser/slow/libbrowser-slow-extension.so');
const hooks = { args: ['--test-hooks'] };

// What a call of the page's object gives, or the message of its error.
function state() {
  try {
    return window.dravelt.orvane.getAppState();
  } catch (error) {
    return `failed: ${error.message}`;
  }
}

// The same of a call that takes so many milliseconds.
function wait(ms) {
  try {
    console.log('waiting');
    return window.example.slow.wait(ms);
  } catch (error) {
    return `failed: ${error.message}`;
  }
}

test('the set goes on after its process has died, and the pages with it', async () => {
  const run = await scene.run(app, hooks);
  const page = await scene.open(run.appUrl);
  await run.call('settings.set', { key: 'db/test/kept', type: 'string', value: 'yes' });
  await run.call('debug.crash').catch(() => {});
  await until(async () => (await run.call('process.get')).deaths.length === 1, 'the death');
  await until(async () => (await run.call('process.get')).state === 'running', 'the restart');
  await until(async () => (await page.evaluate(state)) === 'FOREGROUND', 'an answer');
  const { settings } = await run.call('state.get');
  const { value } = settings.find(({ key }) => key === 'db/test/kept');
  assert.equal(value, 'yes');
});

test('a call in flight when the process dies fails and names the call', async () => {
  const run = await scene.run(app, { args: ['--extension', slowExtension, '--deadline', '60'] });
  const page = await scene.open(run.appUrl);
  await page.evaluate(wait, 0);
  const answer = page.evaluate(wait, 30_000);
  const { pid } = await until(async () => {
    const found = await run.call('process.get');
    return found.handling?.text === '30000' && found;
  }, 'the call to reach the library');
  process.kill(pid, 'SIGKILL');
  assert.match(await answer, /failed: example\.slow/);
  await until(async () => (await run.call('process.get')).deaths.length === 1, 'the death');
  const [death] = (await run.call('process.get')).deaths;
  assert.equal(death.signal, constants.signals.SIGKILL);
  assert.equal(death.handling.name, 'example.slow');
  await until(async () => (await page.evaluate(wait, 0)) === 'done', 'the process to be back');
});

test('a call beyond the deadline fails and names the call; the next one is answered', async () => {
  const run = await scene.run(app, { args: ['--extension', slowExtension, '--deadline', '1'] });
  const page = await scene.open(run.appUrl);
  assert.match(await page.evaluate(wait, 3000), /failed: .*example\.slow/);
  assert.equal((await run.call('process.get')).handling?.text, '3000', 'it is at it still');
  await until(async () => (await page.evaluate(wait, 0)) === 'done', 'the library to be free');
});

test('the simulator answers while the page waits for a call', async () => {
  const run = await scene.run(app, { args: ['--extension', slowExtension] });
  const page = await scene.open(run.appUrl);
  await page.evaluate(() => window.example.slow.wait(0));
  const answer = page.evaluate(() => window.example.slow.wait(2000));
  await until(async () => {
    await run.call('run.info');
    return (await run.call('process.get')).handling?.text === '2000';
  }, 'an answer beside the call');
  assert.equal(await answer, 'done');
});
