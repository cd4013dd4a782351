// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// While an application is being written: the pages of a bundler's own server, and saved files.

import assert from 'node:assert/strict';
import { cpSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import path from 'node:path';
import test from 'node:test';

import { context } from 'esbuild';
import { WebSocketServer } from 'ws';

import { repository, until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';

const scene = makeScene();

const ownVersion = '<script src="version.js"></script>';

// A server of pages, as a framework brings one; answers on WebSockets with "hot" and what it got.
async function startDevServer(headers = {}) {
  const server = createServer((request, response) => {
    const isScript = request.url.endsWith('.js');
    const type = isScript ? 'text/javascript' : 'text/html';
    response.writeHead(200, { 'Content-Type': type, ...headers });
    response.end(isScript ? 'window.own = dravelt.orvane.getVersion()' : html);
  });
  const html = `<!DOCTYPE html><title>Dev</title>${ownVersion}`;
  const sockets = new WebSocketServer({ server });
  sockets.on('connection', (socket) => socket.on('message', (data) => socket.send(`hot ${data}`)));
  await new Promise((resolve) => {
    server.listen(0, '127.0.0.1', resolve);
  });
  scene.onEnd(() => {
    sockets.clients.forEach((socket) => socket.terminate());
    server.closeAllConnections();
    server.close();
  });
  return `http://127.0.0.1:${server.address().port}`;
}

test('pages of a dev server have the object, and its sockets are relayed', async () => {
  const run = await scene.run('examples/tour', { args: ['--url', await startDevServer()] });
  const page = await scene.open(run.appUrl);
  assert.equal(await page.evaluate(() => window.own), '3.9');
  const relayed = await page.evaluate(
    () =>
      new Promise((resolve, reject) => {
        const socket = new WebSocket(`ws://${location.host}/hmr`);
        socket.onopen = () => socket.send('update');
        socket.onmessage = ({ data }) => resolve(data);
        socket.onerror = () => reject(new Error('refused'));
      })
  );
  assert.equal(relayed, 'hot update');
});

test('a policy that forbids the worker is explained, and calls work', async () => {
  const address = await startDevServer({
    'Content-Security-Policy': "worker-src 'none'",
  });
  const run = await scene.run('examples/tour', { args: ['--url', address] });
  const page = await scene.open(run.appUrl);
  assert.equal(await page.evaluate(() => window.own), '3.9');
  const explained = await until(async () => {
    const all = await run.call('explain.list');
    return all.find(({ text }) => text.includes('worker-src'));
  }, 'the explanation');
  assert.match(explained.text, /add 'self' to worker-src/);
  const state = () => window.dravelt.orvane.getAppState();
  assert.equal(await page.evaluate(state), 'FOREGROUND');
});

test('a bundler serves the application and tells its page of changes', async () => {
  const folder = mkdtempSync(path.join(tmpdir(), 'orvane-bundler-'));
  scene.onEnd(() => rmSync(folder, { recursive: true, force: true }));
  cpSync(path.join(repository, 'tests/browser/apps/bundled'), folder, { recursive: true });
  const start = path.join(folder, 'index.html');
  const script = '<script type="module" src="/assets/index.js"></script>';
  writeFileSync(start, readFileSync(start, 'utf8').replace('<!-- built -->', script));
  const bundler = await context({
    entryPoints: [path.join(folder, 'src/main.js')],
    outfile: path.join(folder, 'assets/index.js'),
    nodePaths: [path.join(repository, 'node_modules')],
    bundle: true,
    format: 'esm',
  });
  scene.onEnd(() => bundler.dispose());
  await bundler.watch();
  const { port } = await bundler.serve({ servedir: folder, host: '127.0.0.1' });

  const run = await scene.run(folder, { args: ['--url', `http://127.0.0.1:${port}`] });
  const page = await scene.open(run.appUrl);
  await page.waitForSelector('#state:has-text("FOREGROUND")');
  const changed = page.evaluate(
    () =>
      new Promise((resolve) => {
        const events = new EventSource('/esbuild');
        events.addEventListener('open', () => console.log('listening'));
        events.addEventListener('change', ({ data }) => resolve(data));
      })
  );
  await page.waitForEvent('console', (message) => message.text() === 'listening');
  const file = path.join(folder, 'src/main.js');
  writeFileSync(file, readFileSync(file, 'utf8').replace('Version', 'Edition'));
  assert.match(await changed, /index\.js/);
  await page.reload();
  await page.waitForSelector('h1:has-text("Edition 3.9")');
});

test('a saved file reloads the page', async () => {
  const folder = mkdtempSync(path.join(tmpdir(), 'orvane-watch-'));
  scene.onEnd(() => rmSync(folder, { recursive: true, force: true }));
  cpSync(path.join(repository, 'tests/browser/apps/frames'), folder, { recursive: true });
  const run = await scene.run(folder);
  const page = await scene.open(run.appUrl);
  await until(async () => (await run.call('run.info')).watch === true, 'the watch');
  const file = path.join(folder, 'index.html');
  writeFileSync(file, readFileSync(file, 'utf8').replace('Frames', 'Saved'));
  await page.waitForFunction(() => document.title === 'Saved');
});

test('a page whose policy keeps the runtime out is listed with the reason', async () => {
  const policy = "default-src 'self'; script-src 'nonce-own'";
  const address = await startDevServer({ 'Content-Security-Policy': policy });
  const run = await scene.run('examples/tour', { args: ['--url', address] });
  const page = await scene.open(run.appUrl);
  assert.equal(await page.evaluate(() => typeof window.dravelt), 'undefined');
  const [listed, ...others] = await run.call('pages.list');
  assert.equal(listed.runtime, 'noScript');
  assert.equal(listed.href, new URL('/', run.appUrl).href);
  assert.match(listed.problem, /add 'self' to script-src while you develop/);
  assert.deepEqual(others, []);
  const simulator = await scene.open(run.url);
  const banner = simulator.locator('.banner', { hasText: 'dravelt.orvane is missing in' });
  await banner.filter({ hasText: "add 'self' to script-src" }).waitFor();
});

test('the simulator says that a page of a dev server must not be framed', async () => {
  const policy = "frame-ancestors 'none'";
  const address = await startDevServer({ 'Content-Security-Policy': policy });
  const run = await scene.run('examples/tour', { args: ['--url', address] });
  const simulator = await scene.open(run.url);
  await simulator.getByText('forbids the television to show it').first().waitFor();
});

test('content at an address of this machine is served from there', async () => {
  const folder = mkdtempSync(path.join(tmpdir(), 'orvane-content-'));
  scene.onEnd(() => rmSync(folder, { recursive: true, force: true }));
  cpSync(path.join(repository, 'tests/browser/apps/frames'), folder, { recursive: true });
  const file = path.join(folder, 'config.xml');
  const setContent = (source) =>
    writeFileSync(
      file,
      readFileSync(file, 'utf8').replace(/content src="[^"]*"/, `content src="${source}"`)
    );
  setContent(await startDevServer());
  const run = await scene.run(folder);
  const page = await scene.open(run.appUrl);
  assert.equal(await page.evaluate(() => window.own), '3.9');

  setContent('https://tv.example/app');
  await assert.rejects(scene.run(folder), /content is https:\/\/tv\.example\/app.*--url/);
});
