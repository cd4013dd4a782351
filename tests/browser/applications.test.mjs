// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Applications in a real browser: the examples, and some that were written without this project in
// mind.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { cpSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import test from 'node:test';

import { build } from 'esbuild';

import { pressed } from './support/keys.mjs';
import { repository, until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';

const scene = makeScene();

function temporaryFolder() {
  const folder = mkdtempSync(path.join(tmpdir(), 'orvane-app-'));
  scene.onEnd(() => rmSync(folder, { recursive: true, force: true }));
  return folder;
}

test('the tour gets an answer from every method', async () => {
  const run = await scene.run('examples/tour');
  const page = await scene.open(run.appUrl);
  await page.waitForSelector('body.complete');
  const steps = await page.evaluate(() =>
    window.tour.steps.map(({ call, state, answer }) => ({ call, state, answer }))
  );
  assert.equal(steps.length, 23);
  assert.deepEqual(
    steps.filter(({ state }) => state !== 'answered'),
    []
  );
  assert.equal(
    steps.find(({ call }) => call === 'getForegroundAppId()').answer,
    '"OrvaneTour.Tour"'
  );
  assert.deepEqual(page.problems, []);
});

test('the media application is driven by the remote control', async () => {
  const run = await scene.run('examples/media');
  const page = await scene.open(run.appUrl);
  await page.waitForSelector('#home .focused');
  await pressed(run, page, 'Right');
  assert.equal(await page.textContent('#hero-title'), 'Northern Line');
  await pressed(run, page, 'XF86AudioPlay');
  await page.waitForSelector('#player.playing');
  await until(
    async () => (await run.call('state.get')).screenSaver.owner !== '',
    'the screen saver'
  );
  await pressed(run, page, 'XF86Back');
  await page.waitForSelector('#home:not([hidden])');
});

test('the media application searches with the set’s keyboard', async () => {
  const run = await scene.run('examples/media');
  const page = await scene.open(run.appUrl);
  await page.waitForSelector('#home .focused');
  await pressed(run, page, 'XF86Yellow');
  await page.waitForSelector('#query:focus');
  await run.call('ime.input', { op: 'text', text: 'sa' });
  await page.waitForFunction(
    () => document.getElementById('words').textContent === 'Try: Salt, Sand, Sandcastle'
  );
  const { inputMethod } = await run.call('state.get');
  assert.deepEqual(inputMethod.recommendedWords, ['Salt', 'Sand', 'Sandcastle']);
  await run.call('ime.input', { op: 'enter' });
  await page.waitForSelector('#results .focused');
});

test('each mistake of the bad citizen is shown with its error', async () => {
  const run = await scene.run('examples/bad-citizen');
  const page = await scene.open(run.appUrl);
  const outcomes = [];
  const count = await page.evaluate(() => window.mistakes.length);
  for (let index = 0; index < count; index += 1) {
    await pressed(run, page, 'Return');
    await page.waitForSelector('#outcome[class]:not([class=""])');
    outcomes.push(await page.textContent('#outcome'));
    await pressed(run, page, 'Down');
  }
  assert.match(outcomes[1], /SecurityError \(code 18\): .*add the line <tizen:privilege/);
  assert.match(outcomes[2], /InvalidValuesError.*Invalid OrvaneKeyName/);
  assert.match(outcomes[3], /TypeMismatchError.*"x"/);
  assert.match(outcomes[7], /UnknownError.*Failed to get app state/);
  const problems = (await run.call('run.info')).app.warnings.map(
    ({ element, text }) => `${element} ${text}`
  );
  assert.ok(
    problems.some((text) => text.includes('privilige')),
    problems.join('\n')
  );
});

test('a bundled application runs as it was built', async () => {
  const folder = temporaryFolder();
  cpSync(path.join(repository, 'tests/browser/apps/bundled'), folder, { recursive: true });
  await build({
    entryPoints: [path.join(repository, 'tests/browser/apps/bundled/src/main.js')],
    outfile: path.join(folder, 'assets/index.js'),
    bundle: true,
    minify: true,
    format: 'esm',
  });
  const run = await scene.run(folder);
  const page = await scene.open(run.appUrl);
  await page.waitForSelector('#state:has-text("FOREGROUND")');
  assert.equal(await page.textContent('h1'), 'Version 3.9');
  await page.focus('#field');
  await until(
    async () => (await run.call('ime.input', { op: 'text', text: 'ab' })) || true,
    'typing'
  );
  await page.waitForFunction(() => document.getElementById('text').textContent === 'AB');
  await pressed(run, page, 'XF86Red');
  await page.waitForFunction(() => document.getElementById('keys').textContent.includes('403'));
  assert.deepEqual(page.problems, []);
});

test('an application of plain old scripts runs as it is', async () => {
  const run = await scene.run('tests/browser/apps/plain');
  const page = await scene.open(run.appUrl);
  assert.equal(await page.textContent('#written'), 'Version 3.9');
  assert.equal(await page.textContent('#accent'), 'Straße');
  await page.waitForSelector('#one:focus');
  await pressed(run, page, 'Down');
  await page.waitForSelector('#two:focus');
  await pressed(run, page, 'Return');
  await pressed(run, page, 'XF86Blue');
  await page.waitForFunction(() =>
    /clicked two\nkey 406/.test(document.getElementById('output').innerText)
  );
  assert.equal(await page.evaluate(() => document.compatMode), 'BackCompat');
  assert.deepEqual(page.problems, []);
});

test('a package runs like its folder', async () => {
  const file = path.join(temporaryFolder(), 'tour.wgt');
  const zip = spawnSync('python3', ['-m', 'zipfile', '-c', file, '.'], {
    cwd: path.join(repository, 'examples/tour'),
  });
  assert.equal(zip.status, 0, String(zip.stderr));
  const run = await scene.run(file);
  const page = await scene.open(run.appUrl);
  await page.waitForSelector('body.complete');
  assert.equal(await page.textContent('#done'), '23 of 23');
});
