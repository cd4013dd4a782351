// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

import assert from 'node:assert/strict';
import process from 'node:process';
import { test } from 'node:test';

import { calibrate, measure, roundNanoseconds, Samples, Worker } from '../../bench/harness.mjs';

// A worker whose repetitions take `nanoseconds` of processor time each, and of the clock's time
// what `wall` says. Keeps what it was asked.
class FakeWorker {
  asked = [];

  constructor(nanoseconds, wall = (processor) => processor) {
    Object.assign(this, { nanoseconds, wall });
  }

  async ask(name, count) {
    this.asked.push([name, count]);
    const processor = this.nanoseconds * count;
    return [processor, this.wall(processor), 0];
  }
}

test('fills a round by processor time, however long the worker had to wait', async () => {
  const worker = new FakeWorker(1000, () => 10e9);
  const repeats = await calibrate(worker, 'call');
  assert.ok(repeats * 1000 >= roundNanoseconds, `${repeats} repeats`);
});

test('does not take a first repetition that sets things up for all of them', async () => {
  const worker = new FakeWorker(1000);
  const ask = worker.ask.bind(worker);
  worker.ask = async (name, count) => {
    const [processor, ...rest] = await ask(name, count);
    return [worker.asked.length === 1 ? 5 * roundNanoseconds : processor, ...rest];
  };
  const repeats = await calibrate(worker, 'call');
  assert.ok(repeats * 1000 >= roundNanoseconds, `${repeats} repeats`);
});

test('repeats once what fills a round alone', async () => {
  assert.equal(await calibrate(new FakeWorker(2 * roundNanoseconds), 'storm'), 1);
});

test('ends for a case that takes no time', async () => {
  assert.ok((await calibrate(new FakeWorker(0), 'nothing')) > 0);
});

test('lets the workers take turns, and backwards in every other round', async () => {
  const turns = [];
  const items = ['one', 'two', 'three'].map((name) => ({
    name,
    worker: new FakeWorker(roundNanoseconds),
    samples: { add: () => turns.push(name) },
  }));
  await measure(items, 3);
  const forwards = ['one', 'two', 'three'];
  assert.deepEqual(turns, [...forwards, ...[...forwards].reverse(), ...forwards]);
});

test('keeps the time of one repetition', () => {
  const samples = new Samples();
  for (const processor of [30, 10, 20, 50, 40]) {
    samples.add([processor * 10, processor * 20, 1], 10);
  }
  assert.equal(samples.minimum, 10);
  assert.equal(samples.median, 30);
  assert.equal(samples.medianWall, 60);
  assert.equal(samples.spread, (40 - 20) / 30);
  assert.equal(samples.switches, 5);
});

function scriptWorker(script) {
  return new Worker('of a script', process.execPath, ['-e', script]);
}

test('asks a process, and stops it', async () => {
  const worker = await scriptWorker(
    `console.log('ready');
     require('readline').createInterface({ input: process.stdin }).on('line', (line) => {
       console.log(line === 'call 7' ? '70 80 1' : 'asked for ' + line);
     });`
  ).ready();
  assert.deepEqual(await worker.ask('call', 7), [70, 80, 1]);
  await assert.rejects(worker.ask('other', 1), /worker of a script answered other with no numbers/);
  await worker.stop();
});

test('names the worker that ended, and what it was asked for', async () => {
  const worker = await scriptWorker(
    `console.log('ready'); process.stdin.once('data', () => process.exit(1));`
  ).ready();
  await assert.rejects(worker.ask('call', 1), /worker of a script ended when asked for call/);
  await worker.stop();
});

test('says that a worker could not be started', async () => {
  const worker = new Worker('of nothing', '/nonexistent/program', []);
  await assert.rejects(worker.ready(), /worker of nothing ended when asked for its start/);
  await worker.stop();
});
