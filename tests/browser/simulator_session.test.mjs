// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the simulator's panels have of a real run: its session, its figures, its console.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import test from 'node:test';

import { orvaneProgram, until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';

const scene = makeScene();

/** A run of the application with the panel open, and the page of its simulator. */
async function openPanel(app, tab) {
  const run = await scene.run(app);
  const page = await scene.open(null, { viewport: { width: 1440, height: 900 } });
  await page.goto(run.url);
  await page.click(`#tab-${tab}`);
  return { run, page, app: page.frameLocator('.app-frame') };
}

test('a session that is exported replays on a fresh set without a difference', async () => {
  const { page, app } = await openPanel('examples/tour', 'messages');
  await app.locator('body.complete').waitFor();
  const [download] = await Promise.all([
    page.waitForEvent('download'),
    page.getByLabel('Export the session as JSON').click(),
  ]);
  const folder = mkdtempSync(path.join(tmpdir(), 'orvane-session-'));
  scene.onEnd(() => rmSync(folder, { recursive: true, force: true }));
  const file = path.join(folder, download.suggestedFilename());
  await download.saveAs(file);
  const { app: recorded, records } = JSON.parse(readFileSync(file, 'utf8'));
  assert.equal(recorded.id, 'OrvaneTour.Tour');
  assert.ok(records.length > 40, `${records.length} records`);
  const args = ['replay', file, '--state', path.join(folder, 'state')];
  const replay = spawnSync(orvaneProgram(), args, { encoding: 'utf8', timeout: 60_000 });
  assert.equal(replay.status, 0, replay.stdout + replay.stderr);
});

test('resources are those of the library’s process', async () => {
  const { page, run } = await openPanel('examples/tour', 'resources');
  const figures = page.locator('.figure canvas');
  await figures.nth(1).waitFor();
  const label = await page.getByRole('img', { name: /^Memory: now/ }).getAttribute('aria-label');
  const shown = Number(/now (\d+) MiB/.exec(label)[1]);
  const { value } = await run.call('stat.read', { resource: 'MEMORY' });
  assert.ok(Math.abs(shown - value) <= 16, `${shown} on the page, ${value} in the process`);
  await page.getByRole('img', { name: /^CPU: now \d+ %, highest \d+ %$/ }).waitFor();
});

test('the console has what the page wrote, and what nobody caught', async () => {
  const { page, app } = await openPanel('examples/media', 'console');
  await app.locator('.poster').first().waitFor();
  await app.locator('body').evaluate(() => {
    console.warn('low on', { films: 2 });
    setTimeout(() => {
      throw new RangeError('out of films');
    });
  });
  const rows = page.locator('.console-row');
  const warning = rows.filter({ hasText: /low on .*films/ });
  await warning.waitFor();
  assert.match(await warning.getAttribute('class'), /console-warn/);
  const uncaught = rows.filter({ hasText: 'out of films' });
  await uncaught.waitFor();
  assert.match(await uncaught.getAttribute('class'), /console-error/);
  await page.getByLabel('Text').fill('out of');
  await until(async () => (await rows.count()) === 1, 'the one entry');
});
