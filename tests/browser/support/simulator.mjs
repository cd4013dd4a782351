// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The simulator's page over its development server, where a test can bring about any state of the
// set. Tests with the real set use scene.run().

import assert from 'node:assert/strict';

import { startMock } from '../../../simulator/dev/mock_server.mjs';
import { until } from './orvane_run.mjs';

/** Everything open that a test may look for. */
const allSections =
  'applications windows keyGrabs keyboard screenSaver features settings faults identity'.split(' ');

class SimulatorPage {
  constructor(mock, page, problems) {
    Object.assign(this, { mock, page, problems });
  }

  /** A method of the development server. */
  server(method, params = {}) {
    return this.mock.methods[method](params);
  }

  /** What the page called by that name, the newest last. */
  called(method) {
    return this.mock.calls.filter((call) => call.method === method).map((call) => call.params);
  }

  async waitForCall(method, count = 1) {
    await until(() => this.called(method).length >= count, `${count} calls of ${method}`);
    return this.called(method).at(-1);
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
    assert.deepEqual(this.problems, []);
  }
}

/** @returns {Promise<SimulatorPage>} */
export async function openSimulator(scene, { preferences = {}, prepare, ...options } = {}) {
  const mock = await startMock();
  scene.onEnd(() => mock.close());
  prepare?.(mock.methods);
  const page = await scene.open(null, { viewport: { width: 1440, height: 900 }, ...options });
  const problems = page.problems;
  page.on('console', (message) => {
    if (message.type() === 'error' && !/WebSocket connection/.test(message.text())) {
      problems.push(message.text());
    }
  });
  const stored = JSON.stringify({ openSections: allSections, ...preferences });
  await page.addInitScript((text) => {
    if (window === window.top && !localStorage.getItem('orvane.simulator')) {
      localStorage.setItem('orvane.simulator', text);
    }
  }, stored);
  await page.goto(mock.url);
  await page.locator('.remote-body .key').first().waitFor();
  return new SimulatorPage(mock, page, problems);
}
