// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Applications in a real browser: the examples, and some that were written without this project in
// mind.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { cpSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
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

test('the tour has a step for each method that the declarations know', async () => {
  const declared = readFileSync(path.join(repository, 'types/orvane.d.ts'), 'utf8');
  const manager = declared.slice(declared.indexOf('interface OrvaneManager'));
  const methods = new Set([...manager.matchAll(/^ {4}(\w+)\(/gm)].map(([, name]) => name));
  assert.equal(methods.size, 21);
  const run = await scene.run('examples/tour');
  const page = await scene.open(run.appUrl);
  await page.waitForSelector('body.complete');
  const { steps, own } = await page.evaluate(() => ({
    steps: window.tour.steps.map(({ call }) => call.replace(/\(.*/, '')),
    own: Object.getOwnPropertyNames(Object.getPrototypeOf(window.dravelt.orvane)).filter(
      (name) => /^[a-z]/.test(name) && name !== 'constructor'
    ),
  }));
  assert.deepEqual([...new Set(steps)].sort(), [...methods].sort());
  assert.deepEqual(own.sort(), [...methods].sort());
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

/**
 * Bundles the application as its authors would: hashed names, a file for each view that is loaded
 * when it is needed, and their names written into index.html.
 */
async function bundle(folder) {
  const source = path.join(repository, 'tests/browser/apps/bundled');
  cpSync(path.join(source, 'config.xml'), path.join(folder, 'config.xml'));
  const { metafile } = await build({
    entryPoints: [path.join(source, 'src/main.js')],
    outdir: path.join(folder, 'assets'),
    entryNames: '[name]-[hash]',
    chunkNames: '[name]-[hash]',
    assetNames: '[name]-[hash]',
    absWorkingDir: folder,
    bundle: true,
    splitting: true,
    minify: true,
    sourcemap: true,
    metafile: true,
    format: 'esm',
  });
  const script = Object.keys(metafile.outputs).find((file) => metafile.outputs[file].entryPoint);
  const style = metafile.outputs[script].cssBundle;
  const tags = `<script type="module" crossorigin src="/${script}"></script>
    <link rel="stylesheet" crossorigin href="/${style}">`;
  const page = readFileSync(path.join(source, 'index.html'), 'utf8').replace(
    '<!-- built -->',
    tags
  );
  writeFileSync(path.join(folder, 'index.html'), page);
}

test('a bundled application runs as it was built', async () => {
  const folder = temporaryFolder();
  await bundle(folder);
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

test('a bundled application goes through its history, and finds again what it kept', async () => {
  const folder = temporaryFolder();
  await bundle(folder);
  const run = await scene.run(folder);
  const page = await scene.open(run.appUrl);
  await page.waitForSelector('#state:has-text("FOREGROUND")');
  await pressed(run, page, 'XF86Green');
  await page.waitForSelector('#details');
  assert.equal(new URL(page.url()).pathname, '/details/7');
  assert.equal(await page.textContent('#route'), 'details/7');
  assert.equal(await page.textContent('#focused'), 'OrvaneBund.Bundled');
  await page.waitForFunction(() => Number(document.getElementById('memory').textContent) > 0);
  await pressed(run, page, 'XF86Back');
  await page.waitForSelector('#state:has-text("FOREGROUND")');
  await page.reload();
  await page.waitForSelector('#starts:has-text("2")');
  assert.deepEqual(page.problems, []);
});

/** As editors of those days saved a text: with a byte-order mark, and two characters a line. */
function saveAsBefore(file) {
  const text = readFileSync(file, 'utf8').replace(/\r?\n/g, '\r\n');
  writeFileSync(file, `\ufeff${text}`);
}

test('an application of plain old scripts runs as it is', async () => {
  const folder = temporaryFolder();
  cpSync(path.join(repository, 'tests/browser/apps/plain'), folder, { recursive: true });
  for (const file of ['config.xml', 'data/channels.json', 'scripts/library.js']) {
    saveAsBefore(path.join(folder, file));
  }
  const run = await scene.run(folder);
  const { name, warnings } = (await run.call('run.info')).app;
  assert.equal(name, 'Plain & old <scripts>');
  assert.deepEqual(warnings, []);
  const page = await scene.open(run.appUrl);
  assert.equal(await page.textContent('#written'), 'Version 3.9');
  assert.equal(await page.textContent('#app'), 'OrvanePlai.Plain');
  assert.equal(await page.textContent('#accent'), 'Straße');
  await page.waitForSelector('#channels li:has-text("1 Österreich")');
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

test('a field of a plain old page is filled and sent with the set’s keyboard', async () => {
  const run = await scene.run('tests/browser/apps/plain');
  const page = await scene.open(run.appUrl);
  await page.waitForSelector('#one:focus');
  await pressed(run, page, 'XF86Back');
  await page.waitForSelector('input:focus');
  for (const input of [
    { op: 'text', text: 'news' },
    { op: 'backspace' },
    { op: 'text', text: 't' },
    { op: 'enter' },
  ]) {
    await run.call('ime.input', input);
  }
  await page.waitForFunction(() =>
    /changed\nsearched newt/.test(document.getElementById('output').innerText)
  );
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
