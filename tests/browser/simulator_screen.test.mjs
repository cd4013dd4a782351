// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The simulator's television: its size, and the set's own pictures over the application's.

import assert from 'node:assert/strict';
import test from 'node:test';

import { repository, until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';
import { openSimulator, quietId } from './support/simulator.mjs';

const scene = makeScene();

/** The application's page says where the keyboard is, and which words it recommends. */
function placeKeyboard(simulator) {
  return simulator.inApp(() => {
    const { orvane } = dravelt;
    orvane.setIMEPosition('1920px', '200px', 'TOP_CENTER');
    orvane.setIMERecommendedWordsType(orvane.OrvaneRecommendedWordsType.RECOMMENDED_WORDS_ENABLE);
    orvane.setIMERecommendedWords(['television', 'tell']);
  });
}

/** What is in the application's field. */
const typed = (simulator) => simulator.app.locator('#query').inputValue();

/** Where an element is on the television, in pixels of its 1920 by 1080. */
async function placeOf(page, selector) {
  const screen = await page.locator('.screen').boundingBox();
  const box = await page.locator(selector).boundingBox();
  const scale = 1920 / screen.width;
  const round = (number) => Math.round(number * scale);
  return {
    left: round(box.x - screen.x),
    top: round(box.y - screen.y),
    width: round(box.width),
    height: round(box.height),
  };
}

for (const [width, height] of [
  [1280, 720],
  [1440, 900],
  [1680, 1050],
  [1920, 1080],
]) {
  test(`the television is 16:9 and wholly in sight at ${width} by ${height}`, async () => {
    const { page } = await openSimulator(scene, { viewport: { width, height } });
    const box = await page.locator('.screen').boundingBox();
    assert.ok(Math.abs(box.width / box.height - 16 / 9) < 0.005, `${box.width} × ${box.height}`);
    assert.ok(box.width > width * 0.4, `only ${box.width} wide`);
    const overflow = await page.evaluate(() => [
      document.documentElement.scrollWidth - innerWidth,
      document.documentElement.scrollHeight - innerHeight,
    ]);
    assert.deepEqual(overflow, [0, 0]);
    const frame = page.frames().find((each) => each.parentFrame());
    assert.deepEqual(await frame.evaluate(() => [innerWidth, innerHeight]), [1920, 1080]);
  });
}

test('volume keys that no application took show and change the volume', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.click('[data-key=XF86AudioRaiseVolume]');
  await simulator.shows('.volume-bar', '18');
  await simulator.shows('.press', /the set's own[^]*the set changes its volume/);
  await simulator.page.click('[data-key=XF86AudioMute]');
  await simulator.shows('.volume-bar', 'Mute');
  simulator.assertClean();
});

test('the volume is shown beside the on-screen keyboard, not over it', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.click('.status-actions [aria-label="On-screen keyboard"]');
  await simulator.call('keys.press', { name: 'XF86AudioMute' });
  await simulator.page.locator('.volume-bar').waitFor();
  const volume = await simulator.page.locator('.volume-bar').boundingBox();
  const ime = await simulator.page.locator('.ime').boundingBox();
  assert.ok(volume.y + volume.height <= ime.y, JSON.stringify({ volume, ime }));
});

test('volume keys that an application took leave the volume alone', async () => {
  const simulator = await openSimulator(scene);
  await simulator.inApp(() => dravelt.orvane.registerKey(['VolumeUp']));
  await simulator.page.locator('[data-key=XF86AudioRaiseVolume].key-reaches').waitFor();
  await simulator.page.click('[data-key=XF86AudioRaiseVolume]');
  await simulator.shows('.press', 'registered');
  assert.equal(await simulator.page.locator('.volume-bar').count(), 0);
});

test('the screen saver comes on when the clock is moved, and goes with a press', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.click('text=Until it is on');
  await simulator.shows('.saver', 'Screen saver of the set');
  assert.ok(Number.isInteger(simulator.called('clock.advance')[0].ms));
  await simulator.page.click('.saver', { position: { x: 60, y: 60 } });
  await simulator.page.locator('.saver').waitFor({ state: 'detached' });
  assert.equal(simulator.called('screenSaver.activity').length, 1);
});

test('the last source is shown after a context request, until a key', async () => {
  const simulator = await openSimulator(scene);
  await simulator.inApp(() => {
    const { orvane } = dravelt;
    orvane.requestTvContextTask(
      orvane.OrvaneTarget.CONFIG_LAST_SOURCE,
      orvane.OrvaneAction.CONFIG_LAUNCH
    );
  });
  await simulator.shows('.last-source', /\S+ · \S+/);
  await simulator.page.focus('.television');
  await simulator.page.keyboard.press('Backspace');
  await simulator.page.locator('.last-source').waitFor({ state: 'detached' });
});

test('a window that was moved or quartered is where the set says', async () => {
  const simulator = await openSimulator(scene);
  await simulator.inApp(() => dravelt.orvane.setEpopAppWindow(4));
  await simulator.page.locator('.app-window-moved').waitFor();
  const quarter = await placeOf(simulator.page, '.app-window');
  assert.deepEqual(quarter, { left: 960, top: 540, width: 960, height: 540 });
  await simulator.inApp(() => dravelt.orvane.setEpopAppWindow(1000, true));
  await simulator.shows('.windows', 'moved to 1000, 0');
  assert.equal((await placeOf(simulator.page, '.app-window')).left, 500);
});

test('the keyboard is where setIMEPosition put it, at both resolutions', async () => {
  const simulator = await openSimulator(scene);
  await placeKeyboard(simulator);
  await simulator.page.click('.status-actions [aria-label="On-screen keyboard"]');
  await simulator.shows('.ime', '1920, 200 · top centre');
  const uhd = await placeOf(simulator.page, '.ime');
  assert.ok(Math.abs(uhd.left + uhd.width / 2 - 960) <= 2, JSON.stringify(uhd));
  assert.ok(Math.abs(uhd.top - 100) <= 2, JSON.stringify(uhd));
  await simulator.call('profile.use', { profile: 'fhd' });
  await simulator.shows('.screen-status', '1920×1080');
  assert.ok(Math.abs((await placeOf(simulator.page, '.ime')).top - 200) <= 2);
});

test('a keyboard that was shown by hand says so when its text goes nowhere', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.click('.status-actions [aria-label="On-screen keyboard"]');
  await simulator.shows('.ime-caption', 'No field of the page has the focus');
  await simulator.app.locator('#query').focus();
  await simulator.page.locator('.ime [role=status]').waitFor({ state: 'detached' });
  await simulator.shows('.ime-caption', 'no position given');
});

test('the keyboard comes with a field that is edited, and types into it', async () => {
  const simulator = await openSimulator(scene);
  await placeKeyboard(simulator);
  await simulator.app.locator('#query').focus();
  const ime = simulator.page.locator('.ime');
  await ime.waitFor();
  await ime.getByText('tell', { exact: true }).click();
  await ime.getByText('ABC').click();
  await ime.getByText('Q', { exact: true }).click();
  await ime.getByText('w', { exact: true }).click();
  await ime.getByText('Delete').click();
  await until(async () => (await typed(simulator)) === 'tellQ', 'the text');
  await ime.getByText('Done').click();
  await simulator.waitForCall('ime.input', 5);
  assert.deepEqual(simulator.called('ime.input'), [
    { op: 'text', text: 'tell' },
    { op: 'text', text: 'Q' },
    { op: 'text', text: 'w' },
    { op: 'backspace' },
    { op: 'enter' },
  ]);
  await simulator.inApp(() => document.activeElement.blur());
  await ime.waitFor({ state: 'detached' });
});

test('a recommended word completes the word that was begun', async () => {
  const simulator = await openSimulator(scene);
  await placeKeyboard(simulator);
  await simulator.page.click('.status-actions [aria-label="On-screen keyboard"]');
  const ime = simulator.page.locator('.ime');
  await ime.getByText('t', { exact: true }).click();
  await ime.getByText('e', { exact: true }).click();
  await ime.getByText('television').click();
  await ime.getByText('tell', { exact: true }).click();
  await simulator.waitForCall('ime.input', 6);
  assert.deepEqual(
    simulator.called('ime.input').map(({ op, text }) => text ?? op),
    ['t', 'e', 'backspace', 'backspace', 'television', 'tell']
  );
});

test('arrow keys go from key to key of the keyboard, and not to the set', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.click('.status-actions [aria-label="On-screen keyboard"]');
  await simulator.page.locator('.ime').getByText('q', { exact: true }).focus();
  await simulator.page.keyboard.press('ArrowRight');
  await simulator.page.keyboard.press('ArrowDown');
  await simulator.page.keyboard.press('Enter');
  assert.deepEqual(await simulator.waitForCall('ime.input'), { op: 'text', text: 's' });
  assert.deepEqual(simulator.called('keys.press'), []);
});

test('other windows, the background and the end lie over the picture', async () => {
  const simulator = await openSimulator(scene);
  const tour = 'OrvaneTour.Tour';
  await simulator.call('applications.install', { folder: `${repository}/examples/tour` });
  await simulator.call('applications.launch', { id: tour });
  await simulator.call('applications.setState', { id: quietId, state: 'FOREGROUND' });
  await simulator.shows('.curtain', tour);
  await simulator.call('applications.setState', { id: quietId, state: 'BACKGROUND' });
  await simulator.shows('.curtain', 'In the background');
  await simulator.call('applications.terminate', { id: quietId });
  await simulator.shows('.curtain', 'does not run');
  await simulator.page.click('.curtain button');
  assert.deepEqual(await simulator.waitForCall('applications.launch'), { id: quietId });
});

test('a focus that is elsewhere is told below the television', async () => {
  const simulator = await openSimulator(scene);
  await simulator.shows('.screen-status', 'Focus this application');
  await simulator.call('applications.focus', { id: '' });
  await simulator.shows('.screen-status .chip-warn', 'Focus: nobody');
});

test('the application is reloaded on request', async () => {
  const simulator = await openSimulator(scene);
  const { context: before } = (await simulator.call('pages.list')).at(-1);
  await simulator.page.click('[aria-label="Reload the application\'s page"]');
  await simulator.waitForCall('page.reload');
  await until(
    async () => (await simulator.call('pages.list')).every(({ context }) => context !== before),
    'another page'
  );
});
