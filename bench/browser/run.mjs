// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What a synchronous call costs a page in headless Chromium, against the round trip of a plain
// WebSocket to the same server. By the clock, not by processor time: the page waits for other
// processes, and the wait is what it costs.

import path from 'node:path';

import { launchBrowser } from '../../tests/browser/support/chromium.mjs';
import { repository, startOrvane } from '../../tests/browser/support/orvane_run.mjs';
import { quantile } from '../harness.mjs';

const rounds = 21;
const calls = { echo: 40, message: 40, worker: 40, request: 10 };

// In the page: milliseconds of single calls of each kind, so many of each.
async function measureRound(callsPerRound) {
  const { acknowledge, kinds } = window.bench;
  const times = {};
  acknowledge();
  for (const [kind, count] of Object.entries(callsPerRound)) {
    times[kind] = [];
    for (let left = count; left > 0; left -= 1) {
      const start = performance.now();
      await kinds[kind]();
      times[kind].push(performance.now() - start);
    }
  }
  return times;
}

// A page of its own browser, on a server of its own. `resources` gets what is to be stopped.
async function openPage({ program, source }, resources) {
  const { prepare } = await import(path.join(source, 'bench/browser/page.mjs'));
  process.env.ORVANE = program; // which startOrvane starts
  const run = await startOrvane(path.join(repository, 'examples/tour'));
  resources.push(() => run.stop());
  const browser = await launchBrowser();
  resources.push(() => browser.close());
  const page = await browser.newPage();
  await page.goto(run.appUrl);
  await page.waitForSelector('body.complete');
  await page.evaluate(prepare);
  return page;
}

// For each of the builds, { program, source }, the milliseconds of each kind of call: the median of
// each round. They take turns.
export async function measureBrowser(builds) {
  const resources = [];
  const results = builds.map(() => ({ echo: [], message: [], worker: [], request: [] }));
  try {
    const pages = [];
    for (const build of builds) {
      pages.push(await openPage(build, resources));
    }
    // The first round is for warming up.
    for (let round = 0; round <= rounds; round += 1) {
      for (const [index, page] of pages.entries()) {
        const times = await page.evaluate(measureRound, calls);
        for (const [kind, values] of Object.entries(round > 0 ? times : {})) {
          results[index][kind].push(quantile(values, 0.5));
        }
      }
    }
  } finally {
    for (const stop of resources.reverse()) {
      await stop();
    }
  }
  return results;
}
