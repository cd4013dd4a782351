// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';

import { Build } from '../../bench/build.mjs';
import { peerCases, settings } from '../../bench/cases.mjs';
import { figures, judge, workOut } from '../../bench/figures.mjs';
import { Samples } from '../../bench/harness.mjs';
import { aimTable, caseTable, figureTable, noise, noiseText } from '../../bench/report.mjs';

const aims = JSON.parse(readFileSync(new URL('../../bench/aims.json', import.meta.url), 'utf8'));

// Samples of three rounds; the clock shows `waited` times what the processor took.
function samples(nanoseconds, waited = 1) {
  const result = new Samples();
  for (const share of [1.02, 1, 1.01]) {
    result.add([nanoseconds * share, nanoseconds * share * waited, 0], 1);
  }
  return result;
}

// A build whose every case takes 100 ns, but for those of `times`.
function makeBuild(name, times = {}, waited = 1) {
  const build = Object.create(Build.prototype);
  const samplesOf = ({ cases }) =>
    Object.fromEntries(cases.map((one) => [one, samples(times[one] ?? 100, waited)]));
  return Object.assign(build, {
    name,
    samples: Object.fromEntries(
      Object.entries(settings).map(([setting, what]) => [setting, samplesOf(what)])
    ),
    libraries: { measured: import.meta.filename ?? '/', unscripted: '/' },
    memory: [300, 280, 290],
    browser: null,
  });
}

const peer = { samples: Object.fromEntries(peerCases.map((name) => [name, samples(50)])) };

const lineOf = (text, start) => text.split('\n').find((line) => line.startsWith(start));

test('sets a build against another by their minima', () => {
  const run = {
    build: makeBuild('this', { sameCall: 200 }),
    against: makeBuild('553389a', { sameCall: 400 }),
    peer,
  };
  assert.match(
    lineOf(figureTable(run), 'synchronous call, the same request'),
    / L +2\.00 +2\.00 +4\.00 +0\.500$/
  );
  assert.match(
    lineOf(aimTable(run, aims, true), 'synchronous call, the same request'),
    /of 553389a +0\.500 +0\.45 +0\.36 +missed$/
  );
});

test('does not hold a ratio to another commit against the aims', () => {
  const run = { build: makeBuild('this'), against: makeBuild('1234567', { sameCall: 400 }), peer };
  const line = lineOf(aimTable(run, aims, true), 'synchronous call, the same request');
  assert.match(line, /not measured$/);
});

test('takes the hand-off out of the asynchronous call', () => {
  const build = makeBuild('this', { limit: 10, handOff: 100, asynchronousCall: 220 });
  const figure = figures.find(({ id }) => id === 'asynchronousCall');
  assert.equal(
    workOut(
      figure,
      build.view(peer, (values) => Math.min(...values))
    ).value,
    12
  );
});

test('judges what the clock shows on a quiet machine only', () => {
  const run = { build: makeBuild('this'), against: null, peer };
  const start = 'asynchronous call beyond the hand-off, by the clock';
  assert.match(lineOf(aimTable(run, aims, true), start), /then$/);
  assert.match(lineOf(aimTable(run, aims, false), start), /not judged$/);
});

test('leaves open what was not measured', () => {
  const run = { build: makeBuild('this'), against: null, peer };
  const start = 'synchronous call from a browser';
  assert.match(lineOf(aimTable(run, aims, true), start), /not measured$/);
});

test('says which bound of an aim is kept', () => {
  const bounds = { atLeast: 2, then: 1 };
  assert.deepEqual(
    [3, 2, 1.5, 1, NaN].map((reached) => judge(reached, bounds)),
    ['missed', 'at least', 'at least', 'then', 'not measured']
  );
  assert.equal(judge(0.1, { atLeast: 2 }), 'at least');
});

test('has a figure for every aim, and every figure works out from what is measured', () => {
  const view = makeBuild('this').view(peer, (values) => values[0]);
  for (const figure of figures) {
    assert.equal(typeof workOut(figure, view).value, 'number', figure.id);
  }
  for (const { figure } of aims.aims) {
    assert.ok(
      figures.some(({ id }) => id === figure),
      figure
    );
  }
});

test('lists every case, and those of several threads as such', () => {
  const text = caseTable({ build: makeBuild('this'), against: makeBuild('old'), peer });
  assert.match(text, /^this pages1000 touchedPage .* ns/m);
  assert.match(text, /^old threads storm \(threads\) /m);
  assert.match(text, /^Node add-on differentCalls /m);
});

test('calls a machine quiet on which nothing waited', () => {
  const run = { build: makeBuild('this'), against: makeBuild('old'), peer };
  const measured = noise(run);
  assert.ok(measured.quiet, noiseText(measured));
});

test('calls a machine busy that let the workers wait', () => {
  const measured = noise({ build: makeBuild('this', {}, 1.2), against: null, peer });
  assert.match(noiseText(measured), /BUSY/);
});

test('calls a machine busy on which the same code differed between the commits', () => {
  const run = { build: makeBuild('this', { context: 110 }), against: makeBuild('old'), peer };
  assert.match(noiseText(noise(run)), /BUSY[^]*controls differ by up to 10\.0 %/);
});
