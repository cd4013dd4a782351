// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What happened, in order: log lines, messages, the page's console, key presses, profiling marks
// and explanations.

import { signal } from '../view.js';
import { Rows } from './rows.js';
import { set } from './set.js';

export const log = new Rows(200000);
export const trace = new Rows(50000);
export const consoleRows = new Rows(5000);

const longestHistory = 100;
const longestExplanations = 500;

/** Pressed keys, the newest first; each has a number of its own. */
export const keyHistory = signal([]);
/** Marks in the kernel's trace, oldest first. */
export const markers = signal([]);
/** Why the runtime refused something, oldest first. */
export const explanations = signal([]);
/** The newest request to the set's context service, or null once it was looked at. */
export const contextTask = signal(null);

let lastKey = 0;
let lastConsole = 0;

function nowNs() {
  return Date.now() * 1e6;
}

/** Who registered a key does not matter while nobody has the focus. */
function reasonOf({ reason }) {
  return reason === 'grabbedByOther' && set.focused.value === '' ? 'noFocus' : reason;
}

export function addKey(event) {
  const entry = { ...event, reason: reasonOf(event), number: ++lastKey, at: Date.now() };
  keyHistory.value = [entry, ...keyHistory.value].slice(0, longestHistory);
}

export function addConsole(entries) {
  consoleRows.add(entries.map((entry) => ({ time_ns: nowNs(), ...entry, seq: ++lastConsole })));
}

export function addMarker(marker) {
  markers.value = [...markers.value, marker];
}

export function addExplanation(entry) {
  const entries = [...explanations.value, { time_ns: nowNs(), ...entry }];
  explanations.value = entries.slice(-longestExplanations);
}
