// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The set behind the development server: what a real one would answer, in memory.

import { readFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

import { setKeys } from '../../keys/tables.js';

const repository = join(dirname(fileURLToPath(import.meta.url)), '..', '..');
const mandatory = ['Left', 'Up', 'Right', 'Down', 'Return', 'XF86Back'];

function remoteKeys() {
  const own = JSON.parse(readFileSync(join(repository, 'src/orvane/device_keys.json'), 'utf8'));
  return [
    ...setKeys().map(({ symbol, code, hardwareCode }) => [symbol, code, hardwareCode]),
    ...own.map(({ keyName, keyCode }) => [keyName, keyCode, 0]),
  ].map(([name, keyCode, hardwareCode]) => ({
    name,
    keyCode,
    hardwareCode,
    mandatory: mandatory.includes(name),
  }));
}

export function timeNs() {
  return Math.round((performance.timeOrigin + performance.now()) * 1e6);
}

const app = {
  id: 'OrvaneTour.Tour',
  name: 'Orvane tour',
  package: 'OrvaneTour',
  version: '1.0.0',
  folder: 'examples/tour',
  metadata: [['http://dravelt.example/tv/metadata/register.keygrab.mode.special', 'true']],
  privileges: ['http://tizen.org/privilege/tv.inputdevice'],
};

const features = [
  ['com.korvale/featureconf/ime.resolution', 'int', '1', 'custom'],
  ['com.korvale/featureconf/ud_panel_supported', 'bool', 'true', 'custom'],
  ['orvane.set/screen_saver_seconds', 'int', '300', 'custom'],
  ['tizen.org/feature/platform.version', 'string', '6.5.0', 'platform'],
  ['tizen.org/feature/screen.width', 'int', '1920', 'platform'],
  ['tizen.org/system/model_name', 'string', 'Orvane UHD', 'platform'],
].map(([key, type, text, group]) => ({ key, type, text, group }));

const guide = {
  id: 'OrvaneShow.Guide',
  name: 'Programme guide',
  package: 'OrvaneShow',
  folder: 'examples/guide',
  metadata: [],
  privileges: [],
  running: true,
  state: 2,
  stateName: 'BACKGROUND',
  pid: 0,
};

const ownWindow = {
  app: app.id,
  stackMode: 'NONE',
  hints: {},
  quarterPosition: null,
  position: null,
  focusWanted: true,
};

const inputMethod = {
  dynamic: true,
  positioned: false,
  x: 0,
  y: 0,
  align: 7,
  recommendedEnabled: true,
  recommendedWords: ['television', 'telescope', 'tell'],
};

const screenSaver = {
  owner: 'DEFAULT',
  timeoutSeconds: 300,
  remainingMs: 262000,
  on: false,
  resets: 2,
  inputs: 14,
};

export function newState() {
  return {
    profile: { name: 'uhd', file: 'profiles/uhd.xml', profiles: ['fhd', 'uhd'] },
    panel: { width: 3840, height: 2160 },
    features,
    applications: [{ ...app, running: true, state: 1, stateName: 'FOREGROUND', pid: 4711 }, guide],
    focused: app.id,
    windows: { stack: [app.id], list: [ownWindow] },
    inputMethod,
    keyGrabs: [
      { app: app.id, key: 'XF86Red', mode: 'normal' },
      { app: app.id, key: 'XF86AudioPlay', mode: 'registered' },
    ],
    keys: remoteKeys(),
    settings: [
      { key: 'db/menu/volume', type: 'int', value: 17 },
      { key: 'memory/runningApps/performance_data', type: 'string', value: 'first picture' },
    ],
    screenSaver,
    faults: [{ function: 'vconf_set_str', code: -1, mode: 'once', hits: 0 }],
    functions: ['app_manager_get_focused_app_context', 'screensaver_set_appid', 'vconf_set_str'],
    accesses: ['file:qm_memstat', 'prctl'],
    uuid: '1f0c9a52-6f53-4f0e-9a40-0f6f2a7be3d1',
    time_ns: timeNs(),
  };
}

export function runInfo(appUrl) {
  const warnings = [
    {
      file: 'config.xml',
      line: 9,
      element: 'tizen:privilege',
      text: 'the name has a blank in it; write http://tizen.org/privilege/internet',
    },
  ];
  return {
    version: '0.1.0',
    app: { ...app, warnings },
    appUrl,
    startPath: 'index.html',
    profile: 'uhd',
    deadlineMs: 10000,
    watch: true,
    browser: { headless: false },
    started_ns: timeNs(),
  };
}
