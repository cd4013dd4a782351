// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The set as the server last told it, one signal for each part. Null until it is known.

import { signal } from '../view.js';

const names = [
  'profile',
  'panel',
  'features',
  'applications',
  'focused',
  'windows',
  'inputMethod',
  'keyGrabs',
  'keys',
  'settings',
  'screenSaver',
  'faults',
  'functions',
  'accesses',
  'uuid',
];

/** @type {Record<string, import('@preact/signals').Signal<any>>} */
export const set = Object.fromEntries(names.map((name) => [name, signal(null)]));

/** When the screen saver's remaining time was told, on this page's clock. */
export const screenSaverToldAt = signal(0);

const partOfEvent = { focus: 'focused' };

/** The lists whose rows change one by one, each with the member that is a row's key. */
const keyOfRow = { applications: 'id', faults: 'function', settings: 'key' };

/** Takes the whole answer of state.get. */
export function takeState(state) {
  for (const name of names) {
    if (name in state) {
      takePart(name, state[name]);
    }
  }
}

/** Takes a part that changed. @returns {boolean} whether it is a part of the set at all */
export function takePart(eventName, value) {
  const name = partOfEvent[eventName] ?? eventName;
  if (!(name in set)) {
    return false;
  }
  if (name === 'screenSaver') {
    screenSaverToldAt.value = performance.now();
  }
  set[name].value = value;
  return true;
}

/** Takes a row of a list that changed or is new; null: it is gone. Rows are in order of keys. */
export function takeRow({ part, key, value }) {
  const name = keyOfRow[part];
  if (name === undefined || set[part].value === null) {
    return;
  }
  const before = set[part].value.filter((row) => row[name] < key);
  const after = set[part].value.filter((row) => row[name] > key);
  set[part].value = value === null ? [...before, ...after] : [...before, value, ...after];
}
