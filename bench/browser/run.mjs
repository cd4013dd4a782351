#!/usr/bin/env node
// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// browser/run.mjs PROGRAM
// What a synchronous call costs a page in headless Chromium, against the round trip of a plain
// WebSocket to the same server, in one run: calls of each kind by turns, medians, ratios.
// PROGRAM is the orvane executable.

import path from 'node:path';
import { parseArgs } from 'node:util';

import { launchBrowser } from '../../tests/browser/support/chromium.mjs';
import { repository, startOrvane } from '../../tests/browser/support/orvane_run.mjs';
import { measure, prepare } from './page.mjs';

const rounds = 21;

function quantile(values, part) {
  const sorted = [...values].sort((one, other) => one - other);
  return sorted[Math.floor(sorted.length * part)];
}

const median = (values) => quantile(values, 0.5);

function print(times) {
  const base = median(times.echo);
  const rows = [
    ['WebSocket round trip, answered by the server', times.echo],
    ['the same, answered by the library', times.message],
    ['synchronous call over the worker', times.worker],
    ['synchronous call by blocking request', times.request],
  ];
  const width = Math.max(...rows.map(([name]) => name.length));
  for (const [name, values] of rows) {
    const ms = median(values);
    const text = `${ms.toFixed(3)} ms  ${(ms / base).toFixed(2)} round trips`;
    const slow = quantile(values, 0.9).toFixed(3);
    process.stdout.write(`${name.padEnd(width)}  ${text}  (9 of 10 within ${slow} ms)\n`);
  }
  const gain = (median(times.request) / median(times.worker)).toFixed(1);
  process.stdout.write(`the worker's call is ${gain} times as fast as the request's\n`);
}

async function main() {
  const { positionals } = parseArgs({ allowPositionals: true });
  if (positionals.length > 0) {
    process.env.ORVANE = path.resolve(positionals[0]);
  }
  const run = await startOrvane(path.join(repository, 'examples/tour'));
  const browser = await launchBrowser();
  try {
    const page = await browser.newPage();
    await page.goto(run.appUrl);
    await page.waitForSelector('body.complete');
    await page.evaluate(prepare);
    print(await page.evaluate(measure, rounds));
  } finally {
    await browser.close();
    await run.stop();
  }
}

await main();
