// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A build that is measured: its workers, and what they said.

import { execFileSync } from 'node:child_process';
import { mkdirSync, readFileSync, statSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

import { pagesInMemory, peerCases, settingOf, settings } from './cases.mjs';
import { Samples, Worker } from './harness.mjs';

const here = path.dirname(fileURLToPath(import.meta.url));

function samplesOf(names) {
  return Object.fromEntries(names.map((name) => [name, new Samples()]));
}

export class Build {
  memory = []; // KiB of a page, one for each sitting
  browser = null; // milliseconds of each kind of call: a median for each round

  // `folder` is a CMake build folder with the target bench-workers built.
  constructor(name, folder) {
    this.name = name;
    this.folder = path.resolve(folder);
    this.samples = Object.fromEntries(
      Object.entries(settings).map(([setting, { cases }]) => [setting, samplesOf(cases)])
    );
    this.libraries = {
      measured: this.#strip('liborvane'),
      unscripted: this.#strip('liborvane-bench-bare'),
      empty: path.join(this.folder, 'lib/liborvane-bench-empty.so'),
    };
  }

  get program() {
    return path.join(this.folder, 'bin/orvane');
  }

  // The folder of what was built.
  get source() {
    const cache = readFileSync(path.join(this.folder, 'CMakeCache.txt'), 'utf8');
    return /^CMAKE_HOME_DIRECTORY:INTERNAL=(.*)$/m.exec(cache)[1];
  }

  #strip(library) {
    const stripped = path.join(this.folder, 'bench-stripped', `${library}.so`);
    mkdirSync(path.dirname(stripped), { recursive: true });
    const built = path.join(this.folder, 'lib', `${library}.so`);
    execFileSync('strip', ['-s', '-o', stripped, built]);
    return stripped;
  }

  // `stateFolder` is where its set keeps its state.
  startWorker(setting, { pages, applications }, stateFolder) {
    const { measured, unscripted, empty } = this.libraries;
    return new Worker(
      `${setting} of ${this.name}`,
      path.join(this.folder, 'bin/orvane-bench'),
      [measured, unscripted, empty, pages, applications].map(String),
      { LD_LIBRARY_PATH: path.join(this.folder, 'lib'), TMPDIR: stateFolder }
    ).ready();
  }

  async measureMemory(stateFolder) {
    const worker = await this.startWorker('memory', settings.pages, stateFolder);
    this.memory.push(...(await worker.ask('memory', pagesInMemory)));
    await worker.stop();
  }

  // What figures.mjs works with: `pick` takes one number out of a Samples or a list.
  view(peer, pick) {
    return {
      time: (name, setting = settingOf(name)) => pick(this.samples[setting][name].processor),
      wall: (name) => pick(this.samples[settingOf(name)][name].wall),
      peer: (name) => pick(peer.samples[name].processor),
      memory: () => pick(this.memory),
      size: (library) => statSync(this.libraries[library]).size,
      browser: (kind) => (this.browser ? pick(this.browser[kind]) : NaN),
    };
  }
}

// The Node add-on that does the same work.
export class Peer {
  samples = samplesOf(peerCases);

  // `folder` has the target bench-programs built.
  constructor(folder) {
    this.addon = path.resolve(folder, 'lib/orvane-bench-addon.node');
  }

  startWorker() {
    const script = path.join(here, 'node/worker.mjs');
    return new Worker('Node add-on', process.execPath, [script, this.addon]).ready();
  }
}
