// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The simulator's remote control: keys, shortcuts, long presses, and where keys went.

import assert from 'node:assert/strict';
import test from 'node:test';

import { groupKeys } from '../../simulator/src/remote/key_table.js';
import { shortcuts } from '../../simulator/src/remote/shortcut_table.js';
import { makeScene } from './support/scene.mjs';
import { openSimulator, quietRun } from './support/simulator.mjs';

const scene = makeScene();

test('each press says where it went, and why', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.click('[data-key=XF86Red]');
  await simulator.page.click('[data-key=XF86Blue]');
  await simulator.shows('.press', 'not registered');
  const presses = await simulator.page.locator('.press').allInnerTexts();
  assert.match(presses[0], /Blue\s+406\s+not registered[^]*has not registered it with registerKey/);
  assert.match(presses[1], /Red\s+403\s+registered[^]*OrvaneQuie\.Quiet/);
  await simulator.shows('.last-key', 'Blue');
  simulator.assertClean();
});

test('every key of the set is there to be pressed, and found by name or code', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.click('.all-keys summary');
  await simulator.page.locator('.key-list').first().waitFor();
  assert.equal(await simulator.page.locator('.key-list .key').count(), 146);
  await simulator.page.fill('.all-keys input', '10591');
  assert.equal(await simulator.page.locator('.key-list .key').count(), 2);
  await simulator.page.fill('.all-keys input', 'hotelmov');
  await simulator.page.click('.key-list .key');
  assert.deepEqual(await simulator.waitForCall('keys.press'), { name: 'XF86HotelMovies' });
});

test('a key that is held, or pressed with Shift, is a long press', async () => {
  const simulator = await openSimulator(scene);
  const red = simulator.page.locator('[data-key=XF86Red]').first();
  await red.hover();
  await simulator.page.mouse.down();
  await simulator.waitForCall('keys.press');
  await simulator.page.mouse.up();
  await red.click({ modifiers: ['Shift'] });
  await red.focus();
  await simulator.page.keyboard.press('Shift+Enter');
  await red.click();
  await simulator.waitForCall('keys.press', 4);
  assert.deepEqual(simulator.called('keys.press'), [
    { name: 'XF86Red', long: true },
    { name: 'XF86Red', long: true },
    { name: 'XF86Red', long: true },
    { name: 'XF86Red' },
  ]);
});

test('the keyboard is the remote control while the television has the focus', async () => {
  const simulator = await openSimulator(scene);
  const { keyboard } = simulator.page;
  await simulator.page.focus('.television');
  for (const key of ['ArrowUp', 'Enter', 'Backspace', '7', 'r', 'Shift+ArrowLeft']) {
    await keyboard.press(key);
  }
  await simulator.waitForCall('keys.press', 6);
  assert.deepEqual(simulator.called('keys.press'), [
    { name: 'Up' },
    { name: 'Return' },
    { name: 'XF86Back' },
    { name: '7' },
    { name: 'XF86Red' },
    { name: 'Left', long: true },
  ]);
});

test('keys typed into a field, and those of a panel, are not the remote control', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.fill('.dock input[aria-label=Tag]', '');
  await simulator.page.locator('.dock input[aria-label=Tag]').pressSequentially('r7');
  await simulator.page.focus('#tab-log');
  await simulator.page.keyboard.press('ArrowRight');
  await simulator.page.focus('[data-key=XF86Home]');
  await simulator.page.keyboard.press('Enter');
  await simulator.waitForCall('keys.press');
  assert.deepEqual(simulator.called('keys.press'), [{ name: 'XF86Home' }]);
  assert.equal(await simulator.page.getAttribute('#tab-messages', 'aria-selected'), 'true');
});

test('keys that reach the application are marked, and say so', async () => {
  const simulator = await openSimulator(scene);
  const red = simulator.page.locator('[data-key=XF86Red]').first();
  assert.match(await red.getAttribute('class'), /key-reaches/);
  assert.match(await red.getAttribute('title'), /registered by OrvaneQuie\.Quiet \(normal\)/);
  await simulator.inApp(() => dravelt.orvane.unregisterKey(['ColorF0Red']));
  await simulator.page.locator('[data-key=XF86Red]:not(.key-reaches)').waitFor();
  assert.match(await red.getAttribute('title'), /not registered/);
});

test('without the focus, only keys that are had anywhere are marked', async () => {
  const simulator = await openSimulator(scene);
  const marked = () =>
    simulator.page
      .locator('.remote-body .key-reaches')
      .evaluateAll((keys) => keys.map((key) => key.dataset.key));
  assert.ok((await marked()).includes('XF86Back'));
  await simulator.call('applications.focus', { id: '' });
  await simulator.page.locator('[data-key=XF86Back]:not(.key-reaches)').waitFor();
  assert.deepEqual(await marked(), ['XF86AudioPlay']);
  for (const key of ['XF86Back', 'XF86Red']) {
    await simulator.page.click(`[data-key=${key}]`);
  }
  const reasons = simulator.page.locator('.press .chip');
  await reasons.nth(1).waitFor();
  assert.deepEqual(await reasons.allInnerTexts(), ['nobody has the focus', 'nobody has the focus']);
});

test('the shortcuts are listed', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.click('[aria-label="Keyboard shortcuts"]');
  await simulator.shows('dialog', 'Channel up');
  await simulator.page.keyboard.press('Escape');
  await simulator.page.locator('dialog').waitFor({ state: 'detached' });
  assert.deepEqual(simulator.called('keys.press'), []);
});

test('every key of the set is in exactly one group of the remote control', async () => {
  const { keys } = await (await quietRun(scene)).call('state.get');
  const grouped = groupKeys(keys).flatMap((group) => group.keys.map((key) => key.name));
  assert.deepEqual([...grouped].sort(), keys.map((key) => key.name).sort());
  assert.equal(keys.length, 146); // with one symbol for both Menu and SysMenu
});

test('every shortcut is a key of the set, and no two are typed alike', async () => {
  const { keys } = await (await quietRun(scene)).call('state.get');
  const names = new Set(keys.map((key) => key.name));
  assert.deepEqual(
    shortcuts.filter(([, symbol]) => !names.has(symbol)),
    []
  );
  assert.equal(new Set(shortcuts.map(([typed]) => typed)).size, shortcuts.length);
});
