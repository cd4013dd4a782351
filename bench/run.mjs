#!/usr/bin/env node
// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// bench/run.mjs BUILD [--against BUILD --name COMMIT] [--rounds N] [--sittings N] [--no-browser]
// Measures a build, or two by turns, and prints the figures. script/bench makes the builds. A
// sitting starts all processes anew, since where a process's parts come to lie moves its figures.

import { execFileSync } from 'node:child_process';
import { existsSync, mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import process, { stderr, stdout } from 'node:process';
import { parseArgs } from 'node:util';

import { measureBrowser } from './browser/run.mjs';
import { Build, Peer } from './build.mjs';
import { roundOf, settings } from './cases.mjs';
import { measure } from './harness.mjs';
import { aimTable, caseTable, figureTable, noise, noiseText } from './report.mjs';

const options = {
  against: { type: 'string' },
  name: { type: 'string', default: 'other' },
  rounds: { type: 'string', default: '15' },
  sittings: { type: 'string', default: '3' },
  'no-browser': { type: 'boolean', default: false },
};

// Where the sets keep their state, until this process ends. In memory where there is a file system
// for that, as a set keeps its "memory/" settings.
function makeStateFolder() {
  const parent = existsSync('/dev/shm') ? '/dev/shm' : tmpdir();
  const folder = mkdtempSync(path.join(parent, 'orvane-bench-'));
  process.on('exit', () => rmSync(folder, { recursive: true, force: true }));
  for (const signal of ['SIGINT', 'SIGTERM']) {
    process.on(signal, () => process.exit(1));
  }
  return folder;
}

const itemsOf = (worker, samples) =>
  Object.entries(samples).map(([name, series]) => ({
    worker,
    name,
    samples: series,
    nanoseconds: roundOf(name),
  }));

// The processes of `starters`, each { start, samples }, take turns for some rounds.
async function measureTogether(starters, rounds) {
  const items = [];
  const workers = [];
  try {
    for (const { start, samples } of starters) {
      const worker = await start();
      workers.push(worker);
      items.push(...itemsOf(worker, samples));
    }
    // The builds' processes for one case come right after each other.
    const order = [...new Set(items.map(({ name }) => name))];
    items.sort((one, other) => order.indexOf(one.name) - order.indexOf(other.name));
    await measure(items, rounds);
  } finally {
    await Promise.all(workers.map((worker) => worker.stop()));
  }
}

async function sit(builds, peer, rounds, stateFolder) {
  const starters = Object.entries(settings).flatMap(([setting, what]) =>
    builds.map((build) => ({
      start: () => build.startWorker(setting, what, stateFolder),
      samples: build.samples[setting],
    }))
  );
  await measureTogether(
    [...starters, { start: () => peer.startWorker(), samples: peer.samples }],
    rounds
  );
  for (const build of builds) {
    await build.measureMemory(stateFolder);
  }
}

async function main() {
  const { values, positionals } = parseArgs({ options, allowPositionals: true });
  if (positionals.length !== 1) {
    throw new Error('which build? script/bench knows');
  }
  const build = new Build('this', positionals[0]);
  const against = values.against ? new Build(values.name, values.against) : null;
  const builds = against ? [build, against] : [build];
  const peer = new Peer(positionals[0]);
  const stateFolder = makeStateFolder();
  for (let sitting = 1; sitting <= Number(values.sittings); sitting += 1) {
    stderr.write(`sitting ${sitting} of ${values.sittings}\n`);
    await sit(builds, peer, Number(values.rounds), stateFolder);
  }
  if (!values['no-browser']) {
    stderr.write('browser\n');
    const times = await measureBrowser(builds);
    builds.forEach((one, index) => Object.assign(one, { browser: times[index] }));
  }
  const aims = JSON.parse(readFileSync(new URL('aims.json', import.meta.url), 'utf8'));
  const run = { build, against, peer };
  const measured = noise(run);
  const tables = [figureTable(run), caseTable(run), aimTable(run, aims, measured.quiet)];
  stdout.write(`${tables.join('\n')}\n${noiseText(measured)}\n`);
  execFileSync(path.join(build.folder, 'bin/orvane-bench-set-files'), { stdio: 'inherit' });
}

try {
  await main();
} catch (error) {
  stderr.write(`bench/run.mjs: ${error.message}\n`);
  process.exitCode = 1;
}
