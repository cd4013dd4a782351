// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The simulator over a real set: `orvane run`, the real library, real applications.

import assert from 'node:assert/strict';
import { mkdtempSync, rmSync, statSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import test from 'node:test';

import { makePictures } from './support/make_pictures.mjs';
import { repository, until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';

const scene = makeScene();
const openSections =
  'applications windows keyGrabs keyboard screenSaver features settings faults identity'.split(' ');

/** A run of the application, and the simulator of it. */
async function openRun(app, { tab = 'log', args = [] } = {}) {
  const run = await scene.run(app, { args });
  const page = await scene.open(null, { viewport: { width: 1600, height: 1000 } });
  page.on('console', (message) => {
    if (message.type() === 'error' && message.location().url.startsWith(new URL(run.url).origin)) {
      page.problems.push(message.text());
    }
  });
  const stored = JSON.stringify({ tab, openSections });
  await page.addInitScript((text) => {
    if (window === window.top && !localStorage.getItem('orvane.simulator')) {
      localStorage.setItem('orvane.simulator', text);
    }
  }, stored);
  await page.goto(run.url);
  await page.locator('.remote-body .key').first().waitFor();
  return { run, page, app: page.frameLocator('.app-frame') };
}

const shows = (page, selector, text) =>
  page.locator(selector).filter({ hasText: text }).first().waitFor();

const press = (page, name) => page.locator(`.remote-body [data-key=${name}]`).click();

test('the tour runs in the television, with every method answered', async () => {
  const { page, app } = await openRun('examples/tour', { tab: 'messages' });
  await app.locator('body.complete').waitFor();
  assert.equal(await app.locator('#refused').innerText(), '');
  for (const name of ['getUuid', 'inputdevice/registerKey']) {
    await page.getByLabel('Name or payload').fill(name);
    await shows(page, '.message-row', name);
  }
  await shows(page, '.uuid code', /^[0-9a-f-]{36}$/);
  await shows(page, '.top-chips', 'Library running');
  await shows(page, '.top-chips', 'Fast calls');
  await page.click('#tab-profiling');
  await page.locator('.timeline-rows li').first().waitFor();
  assert.deepEqual(page.problems, []);
});

test('keys reach the application as the rules say, and each press says why', async () => {
  const { page, app } = await openRun('examples/media');
  await app.locator('.poster.focused').first().waitFor();
  const title = await app.locator('#hero-title').innerText();
  await press(page, 'Right');
  await until(async () => (await app.locator('#hero-title').innerText()) !== title, 'another film');
  await shows(page, '.press', 'mandatory');
  await press(page, 'XF86Red');
  await shows(page, '.press', 'registered');
  await app.locator('#notice', { hasText: 'your list' }).waitFor();
  await press(page, 'XF86Blue');
  await shows(page, '.press', 'not registered');
  await page.focus('.television');
  await page.keyboard.press('Enter');
  await app.locator('#player').waitFor();
  await page.keyboard.press('Backspace');
  await app.locator('#home').waitFor();
});

test('a click into the application gives it the keyboard, until another part has it', async () => {
  const { page, app } = await openRun('examples/media');
  await app.locator('.poster.focused').first().waitFor();
  const title = () => app.locator('#hero-title').innerText();
  const presses = () => page.locator('.press strong').allInnerTexts();
  const { x, y, width, height } = await page.locator('.television').boundingBox();
  await page.mouse.click(x + width * 0.6, y + height * 0.3);
  await page.locator('.television-typing').waitFor();
  const first = await title();
  await page.keyboard.press('ArrowRight');
  await until(async () => (await title()) !== first, 'another film');
  await page.keyboard.press('r'); // a letter for the page, not the red key
  await page.keyboard.press('F1');
  await shows(page, '.press', 'Red');
  await until(async () => String(await presses()) === 'Red,Right', 'the presses');
  const second = await title();
  await page.getByLabel('Tag').click();
  await page.keyboard.type('r1');
  await page.keyboard.press('ArrowLeft');
  assert.equal(await page.getByLabel('Tag').inputValue(), 'r1');
  await page.focus('.television');
  await page.keyboard.press('ArrowRight');
  await until(async () => (await title()) !== second, 'the next film');
  await until(async () => String(await presses()) === 'Right,Red,Right', 'the presses');
});

test('text is typed with the on-screen keyboard, where the application put it', async () => {
  const { page, app } = await openRun('examples/media');
  await app.locator('.poster').first().waitFor();
  await press(page, 'XF86Yellow');
  const ime = page.locator('.ime');
  await ime.waitFor();
  await shows(page, '.ime-caption', 'bottom right');
  assert.equal(await ime.getByRole('status').count(), 0);
  for (const letter of 'smal') {
    await ime.getByText(letter, { exact: true }).click();
  }
  await until(async () => (await app.locator('#query').inputValue()) === 'smal', 'the letters');
  await ime.locator('.ime-words button', { hasText: 'Small' }).click();
  await until(async () => (await app.locator('#query').inputValue()) === 'Small', 'the word');
  await app.locator('#results .poster').first().waitFor();
  await page.click('#tab-messages'); // a button of the simulator does not end the typing
  await press(page, 'XF86Info');
  await shows(page, '.press', 'Info');
  assert.equal(await ime.count(), 1);
  await press(page, 'XF86Back');
  await ime.waitFor({ state: 'detached' });
});

test('the screen saver comes on when the clock is moved, unless it is held off', async () => {
  const { page } = await openRun('examples/media');
  await page.click('text=Until it is on');
  await page.locator('.saver').waitFor();
  await press(page, 'Down');
  await page.locator('.saver').waitFor({ state: 'detached' });
});

test('a function that is to fail fails for the page, once', async () => {
  const { page, app } = await openRun('examples/media', { tab: 'messages' });
  await app.locator('.poster').first().waitFor();
  await page.getByLabel('Function to fail').fill('vconf_set_str');
  await page.locator('.fault-new').getByText('Once', { exact: true }).click();
  await page.click('text=Let it fail');
  await shows(page, '.fault', 'vconf_set_str');
  const record = () =>
    app.locator('body').evaluate(
      () =>
        new Promise((resolve) => {
          const { orvane } = window.dravelt;
          orvane.recordProfiling(
            'again',
            () => resolve('recorded'),
            (error) => resolve(error.message)
          );
        })
    );
  assert.equal(await record(), 'Fail to record profile');
  await page.locator('.fault').waitFor({ state: 'detached' });
  assert.equal(await record(), 'recorded');
});

test('another profile answers the page at once', async () => {
  const { page, app } = await openRun('examples/media');
  await app.locator('.poster').first().waitFor();
  await page.selectOption('#profile-select', 'fhd');
  await shows(page, '.screen-status', '1920×1080');
  const refusal = await app.locator('body').evaluate(() => {
    try {
      return window.dravelt.orvane.setEpopAppWindow(1);
    } catch (error) {
      return error.message;
    }
  });
  assert.match(String(refusal), /only supported on UHD models/);
});

test('a setting of the page is one of the panel, and the other way round', async () => {
  const { run, page } = await openRun('examples/media');
  await run.call('settings.set', { key: 'db/test/answer', type: 'int', value: 41 });
  const field = page.getByLabel('Value of db/test/answer');
  await field.fill('42');
  await field.press('Enter');
  await until(
    async () =>
      (await run.call('state.get')).settings.some(
        ({ key, value }) => key === 'db/test/answer' && value === 42
      ),
    'the setting'
  );
});

test('when the library dies the page says so, and the set is as it was', async () => {
  const { run, page, app } = await openRun('examples/tour', { args: ['--test-hooks'] });
  await app.locator('body.complete').waitFor();
  await run.call('features.set', {
    key: 'example.com/feature/kept',
    type: 'int',
    text: '7',
    group: 'custom',
  });
  await page.getByLabel('Value of example.com/feature/kept').waitFor();
  await run.call('debug.crash').catch(() => {});
  await shows(
    page,
    '.banner',
    'ended while it handled debug.crash: it was killed by signal 6 (Aborted)'
  );
  await shows(page, '.banner', 'started again with the state of the set');
  await shows(page, '.top-chips', 'Library running');
  assert.equal(await page.getByLabel('Value of example.com/feature/kept').inputValue(), '7');
  const version = await app.locator('body').evaluate(() => window.dravelt.orvane.getAppState());
  assert.equal(version, 'FOREGROUND');
});

test('another application takes the focus and the keys, until this one is raised', async () => {
  const { page, app } = await openRun('examples/media');
  await app.locator('.poster.focused').first().waitFor();
  await page.getByLabel('Folder or package of another').fill(`${repository}/nowhere`);
  await page.getByText('Install', { exact: true }).click();
  await shows(page, '.toast-error', 'nowhere');
  await page.getByLabel('Folder or package of another').fill(`${repository}/examples/tour`);
  await page.getByText('Install', { exact: true }).click();
  const other = page.locator('.application', { hasText: 'OrvaneTour.Tour' });
  await other.getByText('Launch', { exact: true }).click();
  await shows(page, '.curtain', 'In the background');
  await press(page, 'XF86Red');
  await shows(page, '.press', 'grabbed by another');
  assert.equal(
    await app.locator('body').evaluate(() => dravelt.orvane.getAppState()),
    'BACKGROUND'
  );
  await page.click('.curtain >> text=Bring it to the front');
  await page.locator('.curtain').waitFor({ state: 'detached' });
  await press(page, 'XF86Red');
  await shows(page, '.press', 'registered');
});

test('the application opens in a tab without the television around it', async () => {
  const { page, app } = await openRun('examples/media');
  await app.locator('.poster').first().waitFor();
  const opened = page.waitForEvent('popup');
  await page.getByRole('link', { name: 'Open the application in a tab of its own' }).click();
  const tab = await opened;
  await tab.locator('.poster').first().waitFor();
  assert.match(await tab.evaluate(() => globalThis.dravelt.orvane.getVersion()), /^\d/);
  assert.equal(await tab.evaluate(() => globalThis.opener), null);
});

test('a reload is another page, and keys reach that one', async () => {
  const { run, page, app } = await openRun('examples/media', { args: ['--test-hooks'] });
  await app.locator('.poster').first().waitFor();
  const before = (await run.call('pages.list')).map((each) => each.context);
  await page.click('[aria-label="Reload the application\'s page"]');
  await until(
    async () => (await run.call('pages.list')).every((each) => !before.includes(each.context)),
    'another page'
  );
  await app.locator('.poster.focused').first().waitFor();
  const title = await app.locator('#hero-title').innerText();
  await press(page, 'Right');
  await until(async () => (await app.locator('#hero-title').innerText()) !== title, 'another film');
});

test('two tabs of the application have an instance each', async () => {
  const { run, page, app } = await openRun('examples/media', { args: ['--test-hooks'] });
  await app.locator('.poster').first().waitFor();
  const second = await scene.open(run.appUrl);
  await second.locator('.poster').first().waitFor();
  await until(async () => (await run.call('pages.list')).length === 2, 'two pages');
  await shows(page, '.application', '2 pages');
  await second.close();
  await until(async () => (await run.call('pages.list')).length === 1, 'one page');
});

test("what is wrong with an application's config.xml is listed", async () => {
  const { page } = await openRun('examples/bad-citizen', { tab: 'problems' });
  await shows(page, '.problem', /<tizen:privilige>: nothing reads[^]*config\.xml:10/);
});

test('a refusal is explained where it happens', async () => {
  const { page, app } = await openRun('examples/bad-citizen', { tab: 'problems' });
  await app.locator('#mistakes .focused').waitFor();
  await page.focus('.television');
  await page.keyboard.press('Enter');
  await shows(page, '.problem', 'http://tizen.org/privilege/tv.inputdevice');
  await press(page, 'XF86Red');
  await shows(page, '.press', 'privilege missing');
  await shows(page, '.press', 'http://tizen.org/privilege/tv.inputdevice');
});

test('of twenty thousand lines from the library none is dropped', async () => {
  const { run, page, app } = await openRun('examples/media', { args: ['--test-hooks'] });
  await app.locator('.poster').first().waitFor();
  await page.getByLabel('Tag').fill('FLOOD');
  for (let batch = 0; batch < 40; ++batch) {
    await run.call('debug.log', { priority: 4, tag: 'FLOOD', text: 'flood', count: 500 });
  }
  await shows(page, '.toolbar-count', '20,000 of');
});

test("the documentation's pictures can be taken", async () => {
  const folder = mkdtempSync(path.join(tmpdir(), 'orvane-pictures-'));
  scene.onEnd(() => rmSync(folder, { recursive: true, force: true }));
  const files = await makePictures(folder, scene.browser);
  assert.equal(files.length, 2);
  files.forEach((file) => assert.ok(statSync(file).size > 50000, file));
});
