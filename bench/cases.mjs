// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Which cases run in which worker. Each setting of a build is a process of its own: what lives in
// one is not in the way of the others.

import { roundNanoseconds } from './harness.mjs';

// As in cases.h.
export const stormCalls = 10000;

// What runs in more than one thread: its processor time is that of all of them, and how long the
// caller waits is another thing.
export const threadedCases = new Set(['handOff', 'asynchronousCall', 'storm']);

// Long rounds, so that each has its share of the engine's garbage collection.
const pageRoundNanoseconds = 100e6;
const pageCases = new Set(['page', 'touchedPage']);

export function roundOf(name) {
  return pageCases.has(name) ? pageRoundNanoseconds : roundNanoseconds;
}

const alone = (...cases) => ({ pages: 1, applications: 1, cases });
const amongPages = (pages) => ({ pages, applications: 1, cases: ['sameCall', 'touchedPage'] });

export const settings = {
  calls: alone('limit', 'sameCall'),
  threads: alone('handOff', 'asynchronousCall', 'storm'),
  pages: alone('context', 'instance', 'page', 'touchedPage'),
  libraries: alone('emptyLoad', 'load'),
  applications8: { pages: 1, applications: 8, cases: ['differentCalls'] },
  applications64: { pages: 1, applications: 64, cases: ['sameCall'] },
  pages1: amongPages(1),
  pages10: amongPages(10),
  pages100: amongPages(100),
  pages1000: amongPages(1000),
};

// Where a case is measured that is asked for without a setting: the first that has it.
export function settingOf(name) {
  return Object.keys(settings).find((setting) => settings[setting].cases.includes(name));
}

export const peerCases = ['sameCall', 'differentCalls'];

// Of which the mean memory is taken.
export const pagesInMemory = 200;
