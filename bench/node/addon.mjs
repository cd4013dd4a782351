// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// node addon.mjs ADDON: prints the nanoseconds of one call, the median of several rounds after a
// warm-up.
import { createRequire } from 'node:module';
import { hrtime, argv, stdout } from 'node:process';

const calls = 20000;
const rounds = 7;
const { call } = createRequire(import.meta.url)(argv[2]);

function callOnce() {
  const message = JSON.stringify({ cmd: 'OrvaneManager_getAppState', args: { appid: '' } });
  return JSON.parse(call(message)).result;
}

function measure() {
  const start = hrtime.bigint();
  for (let i = 0; i < calls; ++i) {
    callOnce();
  }
  return Number(hrtime.bigint() - start) / calls;
}

measure();
const samples = Array.from({ length: rounds }, measure).sort((a, b) => a - b);
stdout.write(`${samples[(rounds - 1) / 2]}\n`);
