// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The simulator's page over a real set. The tests of a file share one `orvane run`, which is put
// back before each of them; a test that ends the run, or leaves what stays, has one of its own.

import assert from 'node:assert/strict';
import { once } from 'node:events';

import { WebSocket } from 'ws';

import { until } from './orvane_run.mjs';

// Has Red registered, and Play whoever has the focus; does nothing by itself.
export const quietApp = 'tests/browser/apps/quiet';
export const quietId = 'OrvaneQuie.Quiet';

/** Everything open that a test may look for. */
const allSections =
  'applications windows keyGrabs keyboard screenSaver features settings faults identity'.split(' ');

/** The run that the tests of a file share. */
export const quietRun = (scene) => scene.sharedRun(quietApp, { args: ['--test-hooks'] });

/** The set as it was at the start, and nothing remembered of what happened. */
async function putBack(run) {
  // A page that goes takes its keys along, which must not be those of the next one.
  await until(async () => (await run.call('pages.list')).length === 0, 'the pages to be gone');
  const { focused, applications, profile } = await run.call('state.get');
  for (const { id, running } of applications) {
    if (id !== quietId && running) {
      await run.call('applications.terminate', { id });
    }
  }
  const own = applications.find(({ id }) => id === quietId);
  if (focused !== quietId || own.stateName !== 'FOREGROUND') {
    await run.call('applications.launch', { id: quietId });
  }
  if (profile.name !== 'uhd') {
    await run.call('profile.use', { profile: 'uhd' });
  }
  for (const method of ['factoryReset', 'log.clear', 'trace.clear']) {
    await run.call(method);
  }
}

class SimulatorPage {
  #sent = [];

  constructor(run, page) {
    Object.assign(this, { run, page, app: page.frameLocator('.app-frame') });
    const origin = new URL(run.url).host;
    page.on('websocket', (socket) => {
      if (new URL(socket.url()).host === origin) {
        socket.on('framesent', ({ payload }) => this.#sent.push(JSON.parse(payload)));
      }
    });
    page.on('console', (message) => {
      if (
        message.type() === 'error' &&
        new URL(message.location().url || run.url).host === origin
      ) {
        page.problems.push(message.text());
      }
    });
  }

  /** A method of the set, called beside the page. */
  call(method, params) {
    return this.run.call(method, params);
  }

  /** What a function of the application's page gives; it gets the page's body and the argument. */
  inApp(act, argument) {
    return this.app.locator('body').evaluate(act, argument);
  }

  /** So many lines, numbered from 0 when there are several, written in this order. */
  async write(text, { count = 1, ...line } = {}) {
    const { host, origin } = new URL(this.run.url);
    const address = `ws://127.0.0.1:${new URL(this.run.url).port}/api?token=${this.run.token}`;
    const socket = new WebSocket(address, { headers: { Host: host }, origin });
    let answered = 0;
    const done = new Promise((resolve, reject) => {
      socket.on('error', reject).on('message', (data) => {
        const { id, error } = JSON.parse(data);
        answered += id === undefined ? 0 : 1;
        if (error) {
          reject(new Error(error.message));
        } else if (answered === count) {
          resolve();
        }
      });
    });
    await once(socket, 'open');
    for (let id = 0; id < count; ++id) {
      const params = { tag: 'QM_WEBAPI', text: count > 1 ? `${text} ${id}` : text, ...line };
      socket.send(JSON.stringify({ id, method: 'debug.log', params }));
    }
    await done;
    socket.close();
  }

  /** What the page called by that name, the newest last. */
  called(method) {
    return this.#sent.filter((call) => call.method === method).map((call) => call.params);
  }

  async waitForCall(method, count = 1) {
    await until(() => this.called(method).length >= count, `${count} calls of ${method}`);
    return this.called(method).at(-1);
  }

  /** Waits for the application's page, too: one that is left while it starts is listed for long. */
  async reload() {
    await this.page.reload();
    await this.page.locator('.remote-body .key').first().waitFor();
    await this.app.locator('body.ready').waitFor();
  }

  tab(name) {
    return this.page.click(`#tab-${name}`);
  }

  get dock() {
    return this.page.locator('.dock');
  }

  /** Waits for the page to show `text` in an element. */
  shows(selector, text) {
    return this.page.locator(selector).filter({ hasText: text }).first().waitFor();
  }

  press(name) {
    return this.page.locator(`.remote-body [data-key=${name}]`).click();
  }

  /** Nothing is left of what the application's start wrote. */
  async clearLog() {
    await this.write('last of the start');
    await this.shows('.log-row', 'last of the start');
    await this.dock.getByLabel('Clear the log').click();
    await this.shows('.empty', 'No line yet');
  }

  async clearMessages() {
    await this.inApp(() => dravelt.orvane.getAppState());
    await this.shows('.message-row', 'getAppState');
    await this.dock.getByLabel('Clear the messages').click();
    await this.shows('.empty', 'No message yet');
  }

  /** The text of a file that the page hands out when `act` is done. */
  async downloaded(act) {
    const [download] = await Promise.all([this.page.waitForEvent('download'), act()]);
    const chunks = [];
    for await (const chunk of await download.createReadStream()) {
      chunks.push(chunk);
    }
    return { name: download.suggestedFilename(), text: Buffer.concat(chunks).toString('utf8') };
  }

  /** Neither an uncaught error nor something that the page's content policy refused. */
  assertClean() {
    assert.deepEqual(this.page.problems, []);
  }
}

/**
 * The simulator's page, with the application's page in it. Without `run` it is that of the file.
 * @returns {Promise<SimulatorPage>}
 */
export async function openSimulator(
  scene,
  { run: given, preferences = {}, prepare, ...options } = {}
) {
  const run = given ?? (await quietRun(scene));
  if (!given) {
    await putBack(run);
  }
  const page = await scene.open(null, { viewport: { width: 1440, height: 900 }, ...options });
  const simulator = new SimulatorPage(run, page);
  const stored = JSON.stringify({ openSections: allSections, ...preferences });
  await page.addInitScript((text) => {
    if (window === window.top && !localStorage.getItem('orvane.simulator')) {
      localStorage.setItem('orvane.simulator', text);
    }
  }, stored);
  await prepare?.(page);
  await page.goto(run.url);
  await page.locator('.remote-body .key').first().waitFor();
  if (!given) {
    await simulator.app.locator('body.ready').waitFor();
    await page.locator('.remote-body [data-key=XF86Red].key-reaches').waitFor();
  }
  return simulator;
}
