// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The simulator's panel of the set: every change goes to the set, and what the set is comes back.

import assert from 'node:assert/strict';
import test from 'node:test';

import { repository } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';
import { openSimulator, quietId } from './support/simulator.mjs';

const scene = makeScene();

const section = (simulator, name) => simulator.page.locator(`#section-${name}`);

/** The simulator, and in its panel a second application, which is in the background. */
async function openWithTour() {
  const simulator = await openSimulator(scene);
  const { applications } = await simulator.call('state.get');
  if (!applications.some(({ id }) => id === 'OrvaneTour.Tour')) {
    await simulator.call('applications.install', { folder: `${repository}/examples/tour` });
  }
  await simulator.call('applications.launch', { id: 'OrvaneTour.Tour' });
  await simulator.call('applications.focus', { id: quietId });
  await simulator.shows('.focus-line', quietId);
  return simulator;
}

test('another profile is another panel', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.selectOption('#profile-select', 'fhd');
  await simulator.shows('.profile', '1920×1080');
  assert.deepEqual(simulator.called('profile.use'), [{ profile: 'fhd' }]);
});

test('a feature key is changed, removed and added', async () => {
  const simulator = await openSimulator(scene);
  const features = section(simulator, 'features');
  const version = features.getByLabel('Value of tizen.org/feature/platform.version', {
    exact: true,
  });
  await version.fill('7.0.0');
  await version.press('Enter');
  await features
    .getByLabel('Value of com.korvale/featureconf/ud_panel_supported')
    .selectOption('false');
  await features.getByLabel('Remove orvane.set/screen_saver_seconds').click();
  await features.getByLabel('New key').fill('example.com/feature/new');
  await features.getByLabel('Type', { exact: true }).selectOption('int');
  await features.getByLabel('New value', { exact: true }).fill('4');
  await features.getByText('Add').click();
  await features.getByLabel('Value of example.com/feature/new').waitFor();
  await features
    .getByLabel('Remove orvane.set/screen_saver_seconds')
    .waitFor({ state: 'detached' });
  await simulator.waitForCall('features.set', 3);
  assert.deepEqual(simulator.called('features.set'), [
    {
      key: 'tizen.org/feature/platform.version',
      type: 'string',
      text: '7.0.0',
      group: 'platform',
    },
    {
      key: 'com.korvale/featureconf/ud_panel_supported',
      type: 'bool',
      text: 'false',
      group: 'custom',
    },
    { key: 'example.com/feature/new', type: 'int', text: '4', group: 'custom' },
  ]);
  assert.deepEqual(simulator.called('features.remove'), [
    { key: 'orvane.set/screen_saver_seconds' },
  ]);
});

test('a field goes back to what the set has on Escape', async () => {
  const simulator = await openSimulator(scene);
  const version = simulator.page.getByLabel('Value of tizen.org/feature/platform.version', {
    exact: true,
  });
  await version.fill('7.0.0');
  await version.press('Escape');
  assert.equal(await version.inputValue(), '6.5.0');
  assert.deepEqual(simulator.called('features.set'), []);
});

test('a setting keeps its type', async () => {
  const simulator = await openSimulator(scene);
  await simulator.call('settings.set', { key: 'db/menu/volume', type: 'int', value: 17 });
  const volume = section(simulator, 'settings').getByLabel('Value of db/menu/volume');
  await volume.fill('20');
  await volume.press('Enter');
  assert.deepEqual(await simulator.waitForCall('settings.set'), {
    key: 'db/menu/volume',
    type: 'int',
    value: 20,
  });
  await simulator.call('settings.set', { key: 'db/menu/volume', type: 'int', value: 33 });
  await simulator.page.waitForFunction(
    () => document.querySelector('[aria-label="Value of db/menu/volume"]').value === '33'
  );
});

test('an application is put into a state, focused and ended', async () => {
  const simulator = await openWithTour();
  const tour = section(simulator, 'applications').locator('.application', {
    hasText: 'OrvaneTour.Tour',
  });
  await tour.getByLabel('State of OrvaneTour.Tour').selectOption('FOREGROUND');
  await tour.getByText('Focus', { exact: true }).click();
  await simulator.shows('.focus-line', 'OrvaneTour.Tour');
  await simulator.page.click('text=Take it away');
  await simulator.shows('.focus-line', 'nobody');
  await tour.getByText('End', { exact: true }).click();
  await tour.getByText('Launch').waitFor();
  assert.deepEqual(simulator.called('applications.setState'), [
    { id: 'OrvaneTour.Tour', state: 'FOREGROUND' },
  ]);
});

test('another application is installed beside the one that runs', async () => {
  const simulator = await openSimulator(scene);
  const applications = section(simulator, 'applications');
  const folder = `${repository}/examples/media`;
  await applications.getByLabel('Folder or package of another').fill(folder);
  await applications.getByText('Install', { exact: true }).click();
  await applications.locator('.application', { hasText: 'OrvaneMedi.Media' }).waitFor();
  await simulator.shows('.toast', 'is installed');
  assert.deepEqual(simulator.called('applications.install'), [{ folder }]);
});

test('metadata and privileges are those of config.xml', async () => {
  const simulator = await openSimulator(scene);
  const quiet = section(simulator, 'applications').locator('.application', { hasText: quietId });
  await quiet.locator('summary').click();
  await quiet.getByText('http://tizen.org/privilege/tv.inputdevice').waitFor();
  await quiet.getByText('register.keygrab.mode.special').waitFor();
});

test('a function is made to fail and to work again', async () => {
  const simulator = await openSimulator(scene);
  const faults = section(simulator, 'faults');
  await faults.getByLabel('Function to fail').fill('screensaver_set_appid');
  await faults.getByLabel('Code').fill('-5');
  await faults.getByText('Once', { exact: true }).click();
  await faults.getByText('Let it fail').click();
  await faults.locator('.fault', { hasText: 'screensaver_set_appid' }).waitFor();
  assert.deepEqual(simulator.called('faults.set'), [
    { function: 'screensaver_set_appid', code: -5, mode: 'once' },
  ]);
  await faults.getByLabel('Let screensaver_set_appid work again').click();
  await faults
    .locator('.fault', { hasText: 'screensaver_set_appid' })
    .waitFor({ state: 'detached' });
  assert.deepEqual(await simulator.waitForCall('faults.clear'), {
    function: 'screensaver_set_appid',
  });
});

test('what can be made to fail is listed, found by a part of its name, and chosen', async () => {
  const simulator = await openSimulator(scene);
  const faults = section(simulator, 'faults');
  const list = faults.getByLabel('What can be made to fail');
  const { functions, accesses } = await simulator.call('state.get');
  const all = functions.length + accesses.length;
  assert.equal(await list.locator('option').count(), all);
  await faults.getByLabel('Function to fail').fill('prc');
  assert.deepEqual(await list.locator('option').allInnerTexts(), ['prctl']);
  await list.selectOption('prctl');
  await faults.getByText('Let it fail').click();
  await faults.locator('.fault', { hasText: 'prctl' }).waitFor();
  assert.deepEqual(simulator.called('faults.set'), [
    { function: 'prctl', code: -1, mode: 'always' },
  ]);
  assert.equal(await list.locator('option').count(), all);
});

test('what the server refuses is said as it says it', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.getByLabel('Function to fail').fill('vconf_set');
  await simulator.page.click('text=Let it fail');
  await simulator.shows('.toast-error', /"vconf_set" is no platform function[^]*vconf_set_str/);
});

test('a factory reset asks first', async () => {
  const simulator = await openSimulator(scene);
  await simulator.page.click('text=Factory reset…');
  await simulator.page.click('dialog >> text=Cancel');
  assert.deepEqual(simulator.called('factoryReset'), []);
  await simulator.page.click('text=Factory reset…');
  await simulator.page.locator('dialog .button-danger').click();
  await simulator.waitForCall('factoryReset');
  await simulator.shows('.toast', 'as it left the factory');
});

test('the screen saver tells its owner and what remains', async () => {
  const simulator = await openSimulator(scene);
  await simulator.call('features.set', {
    key: 'orvane.set/screen_saver_seconds',
    type: 'int',
    text: '60',
    group: 'custom',
  });
  await simulator.call('screenSaver.activity');
  await simulator.call('clock.advance', { ms: 19000 });
  const saver = section(simulator, 'screenSaver');
  await saver.getByText('the set (DEFAULT)').waitFor();
  await saver.getByText('60 s', { exact: true }).waitFor();
  await saver.getByText(/in 0:(41|40|39)/).waitFor();
  await saver.getByText('+30 s').click();
  assert.deepEqual(await simulator.waitForCall('clock.advance'), { ms: 30000 });
});

test('the style of the on-screen keyboard can be fixed', async () => {
  const simulator = await openSimulator(scene);
  await section(simulator, 'keyboard').getByRole('checkbox').click();
  assert.deepEqual(await simulator.waitForCall('inputMethod.setDynamic'), { dynamic: false });
});
