// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Workers are processes that do one thing a number of times when they are told to, and say what
// processor time that took (worker.cc tells the protocol). A run lets all its workers take turns,
// so that what disturbs the machine for a while disturbs all of them alike.
//
// Processor time, not the clock's: a worker that has to wait for a processor is not slower for it.

import { spawn } from 'node:child_process';
import { once } from 'node:events';
import process from 'node:process';
import { createInterface } from 'node:readline';

// Long enough to drown what starting a measurement costs, short enough for many rounds.
export const roundNanoseconds = 20e6;

const mostRepeats = 2 ** 24;

export class Worker {
  #process;
  #lines;
  #name;

  constructor(name, command, [...args], environment = {}) {
    this.#name = name;
    this.#process = spawn(command, args, {
      stdio: ['pipe', 'pipe', 'inherit'],
      env: { ...process.env, ...environment },
    });
    this.#process.on('error', () => {}); // its output ends as well
    this.#process.stdin.on('error', () => {});
    this.#lines = createInterface({ input: this.#process.stdout })[Symbol.asyncIterator]();
  }

  async #next(asked) {
    const { value, done } = await this.#lines.next();
    if (done) {
      throw new Error(`the worker ${this.#name} ended when asked for ${asked}`);
    }
    return value;
  }

  async ready() {
    await this.#next('its start');
    return this;
  }

  // The numbers that it answers.
  async ask(name, count) {
    this.#process.stdin.write(`${name} ${count}\n`);
    const numbers = (await this.#next(name)).split(' ').map(Number);
    if (numbers.some(Number.isNaN)) {
      throw new Error(`the worker ${this.#name} answered ${name} with no numbers`);
    }
    return numbers;
  }

  async stop() {
    if (this.#process.exitCode === null && this.#process.signalCode === null) {
      const exit = once(this.#process, 'exit');
      this.#process.stdin.end();
      await exit;
    }
  }
}

// The nanoseconds of one repetition, one for each round.
export class Samples {
  processor = [];
  wall = [];
  switches = 0; // times that another process was put in its place

  add([processor, wall, switches], repeats) {
    this.processor.push(processor / repeats);
    this.wall.push(wall / repeats);
    this.switches += switches;
  }

  get minimum() {
    return Math.min(...this.processor);
  }

  get median() {
    return quantile(this.processor, 0.5);
  }

  get medianWall() {
    return quantile(this.wall, 0.5);
  }

  // The middle half of the rounds, as a share of the median: how far to trust it.
  get spread() {
    return (quantile(this.processor, 0.75) - quantile(this.processor, 0.25)) / this.median;
  }
}

export function quantile(values, share) {
  const sorted = [...values].sort((one, other) => one - other);
  return sorted[Math.round(share * (sorted.length - 1))];
}

// How many repetitions fill a round. Asks twice before it believes that some do: engines compile
// what has run often, and the first time pays for more than itself.
export async function calibrate(worker, name, nanoseconds = roundNanoseconds) {
  let repeats = 1;
  let filled = 0;
  while (filled < 2 && repeats < mostRepeats) {
    const [processor] = await worker.ask(name, repeats);
    if (processor >= nanoseconds) {
      filled += 1;
    } else {
      filled = 0;
      repeats *= processor * 8 < nanoseconds ? 4 : 2;
    }
  }
  return repeats;
}

// Measures `items`, each { worker, name, samples, nanoseconds }, by turns. In every other round the
// turns are taken backwards, so that none always follows the same.
export async function measure(items, rounds) {
  for (const item of items) {
    item.repeats = await calibrate(item.worker, item.name, item.nanoseconds);
  }
  const backwards = [...items].reverse();
  for (let round = 0; round < rounds; round += 1) {
    for (const { worker, name, repeats, samples } of round % 2 === 0 ? items : backwards) {
      samples.add(await worker.ask(name, repeats), repeats);
    }
  }
}
