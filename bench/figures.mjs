// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What a run measures in one build, and what is worked out from it.

import { stormCalls } from './cases.mjs';

const among = (pages) => `pages${pages}`;

// Each is `cost` per `per`, both worked out of one build's measurements by the same statistic:
// `at` has time(case, setting), which is processor time, wall(case), peer(case), size(library),
// memory() and browser(kind). Two builds are compared by their costs alone. A control has the same
// code in every build, so that its ratio tells what the ratios of that run are worth.
export const figures = [
  { id: 'limit', what: 'L: 88 bytes into a native function, 44 out', unit: 'ns', control: true },
  {
    id: 'sameCall',
    what: 'synchronous call, the same request again and again',
    unit: 'L',
    per: (at) => at.time('limit'),
  },
  {
    id: 'differentCalls',
    what: 'synchronous call, eight different requests in turn',
    unit: 'L',
    cost: (at) => at.time('differentCalls', 'applications8'),
    per: (at) => at.time('limit'),
  },
  {
    id: 'sameCallPeer',
    what: 'the same request, against the Node add-on',
    unit: 'add-on',
    cost: (at) => at.time('sameCall'),
    per: (at) => at.peer('sameCall'),
  },
  {
    id: 'differentCallsPeer',
    what: 'different requests, against the Node add-on',
    unit: 'add-on',
    cost: (at) => at.time('differentCalls', 'applications8'),
    per: (at) => at.peer('differentCalls'),
  },
  {
    id: 'callAmong64Applications',
    what: 'a call with 64 applications running, against one',
    unit: 'times',
    cost: (at) => at.time('sameCall', 'applications64'),
    per: (at) => at.time('sameCall', among(1)),
  },
  { id: 'handOff', what: 'hand-off to a thread and back', unit: 'ns', control: true },
  {
    id: 'asynchronousCall',
    what: 'asynchronous call beyond the hand-off',
    unit: 'L',
    cost: (at) => at.time('asynchronousCall') - at.time('handOff'),
    per: (at) => at.time('limit'),
  },
  {
    id: 'storm',
    what: 'storm of 10,000, per message',
    unit: 'L',
    cost: (at) => at.time('storm') / stormCalls,
    per: (at) => at.time('limit'),
  },
  {
    id: 'asynchronousWait',
    what: 'asynchronous call beyond the hand-off, by the clock',
    unit: 'L',
    cost: (at) => at.wall('asynchronousCall') - at.wall('handOff'),
    per: (at) => at.time('limit'),
    needsQuiet: true,
  },
  {
    id: 'stormWait',
    what: 'storm of 10,000, per message, by the clock',
    unit: 'L',
    cost: (at) => at.wall('storm') / stormCalls,
    per: (at) => at.time('limit'),
    needsQuiet: true,
  },
  { id: 'context', what: 'bare script context', unit: 'ns', control: true },
  {
    id: 'page',
    what: 'page, nothing touched',
    unit: 'contexts',
    per: (at) => at.time('context'),
  },
  {
    id: 'touchedPage',
    what: 'page, object touched',
    unit: 'contexts',
    per: (at) => at.time('context'),
  },
  {
    id: 'instance',
    what: 'instance',
    unit: 'contexts',
    per: (at) => at.time('context'),
  },
  ...[10, 100, 1000].map((pages) => ({
    id: `callAmong${pages}`,
    what: `a call with ${pages} pages alive, against one`,
    unit: 'times',
    cost: (at) => at.time('sameCall', among(pages)),
    per: (at) => at.time('sameCall', among(1)),
  })),
  ...[10, 100, 1000].map((pages) => ({
    id: `pageAmong${pages}`,
    what: `making a page with ${pages} alive, against one`,
    unit: 'times',
    cost: (at) => at.time('touchedPage', among(pages)),
    per: (at) => at.time('touchedPage', among(1)),
  })),
  { id: 'memory', what: 'memory of a touched page', unit: 'KiB', cost: (at) => at.memory() },
  { id: 'emptyLoad', what: 'load of an empty library', unit: 'ns', control: true },
  {
    id: 'load',
    what: 'library load',
    unit: 'empty libraries',
    per: (at) => at.time('emptyLoad'),
  },
  {
    id: 'unscriptedSize',
    what: 'size of the stripped library without its script text',
    unit: 'bytes',
    cost: (at) => at.size('unscripted'),
  },
  {
    id: 'size',
    what: 'size of the stripped library',
    unit: 'bytes',
    cost: (at) => at.size('measured'),
  },
  {
    id: 'browserMessage',
    what: 'message to the library from a browser page',
    unit: 'round trips',
    cost: (at) => at.browser('message'),
    per: (at) => at.browser('echo'),
    needsQuiet: true,
  },
  {
    id: 'browserCall',
    what: 'synchronous call from a browser page',
    unit: 'round trips',
    cost: (at) => at.browser('worker'),
    per: (at) => at.browser('echo'),
    needsQuiet: true,
  },
  {
    id: 'browserRequest',
    what: 'the same by blocking request',
    unit: 'round trips',
    cost: (at) => at.browser('request'),
    per: (at) => at.browser('echo'),
    needsQuiet: true,
  },
];

// A figure of one build: { cost, value }; NaN where the run left something out.
export function workOut(figure, at) {
  const cost = figure.cost ? figure.cost(at) : at.time(figure.id);
  return { cost, value: figure.per ? cost / figure.per(at) : cost };
}

// Which of an aim's two bounds is kept.
export function judge(reached, { atLeast, then }) {
  if (Number.isNaN(reached)) {
    return 'not measured';
  }
  if (then !== undefined && reached <= then) {
    return 'then';
  }
  return reached <= atLeast ? 'at least' : 'missed';
}
