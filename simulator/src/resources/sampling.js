// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Figures of the library's process, taken with its own getSystemStat while somebody looks.

import { signal } from '../view.js';
import { call } from '../api/session.js';

const everyMs = 1000;
const mostSamples = 1800;

/** Seconds since 1970, percent of all processors, MiB: columns of equal length. */
export const samples = signal([[], [], []]);
/** Why the newest sample is missing, or null. */
export const samplingError = signal(null);

async function sample() {
  const [cpu, memory] = await Promise.all([
    call('stat.read', { resource: 'CPU' }),
    call('stat.read', { resource: 'MEMORY' }),
  ]);
  const row = [Date.now() / 1000, cpu.value, memory.value];
  samples.value = samples.value.map((column, index) => [...column, row[index]].slice(-mostSamples));
}

/** Takes samples until the answer is called. @returns {() => void} */
export function startSampling() {
  let timer = 0;
  let stopped = false;
  const next = async () => {
    try {
      await sample();
      samplingError.value = null;
    } catch (error) {
      samplingError.value = error.message;
    }
    if (!stopped) {
      timer = setTimeout(next, everyMs);
    }
  };
  next();
  return () => {
    stopped = true;
    clearTimeout(timer);
  };
}
