// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The labels that an application recorded, read from the marks in the kernel's trace.

const pattern = /^orvane\.RecordProfiling with \[([^\]]*)\] \[([^\]]*)\]\[([\s\S]*)\]$/;

/**
 * @typedef {{index: number, label: string, app: string, timeNs: number, gapMs: number | null,
 *            fromStartMs: number}} ProfilingPoint
 */

/**
 * One list for each time that the record was cleared, the newest last; empty lists are left out.
 * @param {{time_ns: number, text: string}[]} markers
 * @returns {ProfilingPoint[][]}
 */
export function profilingRuns(markers) {
  const runs = [[]];
  for (const { time_ns: timeNs, text } of markers) {
    const match = pattern.exec(text);
    if (!match) {
      continue;
    }
    const [, app, elapsed, label] = match;
    if (label === '') {
      runs.push([]);
      continue;
    }
    // The library begins at nought again with every page, without clearing first.
    if (elapsed === '0.000' && runs[runs.length - 1].length > 0) {
      runs.push([]);
    }
    const run = runs[runs.length - 1];
    const before = run[run.length - 1];
    run.push({
      index: run.length,
      label,
      app,
      timeNs,
      gapMs: before ? (timeNs - before.timeNs) / 1e6 : null,
      fromStartMs: before ? (timeNs - run[0].timeNs) / 1e6 : 0,
    });
  }
  return runs.filter((run) => run.length > 0);
}

/** Round numbers for an axis of about `wanted` steps. */
export function axisTicks(lengthMs, wanted = 8) {
  const rough = Math.max(lengthMs, 0.001) / wanted;
  const power = 10 ** Math.floor(Math.log10(rough));
  const step = power * ([1, 2, 5, 10].find((each) => each * power >= rough) ?? 10);
  const ticks = [];
  for (let at = 0; at <= lengthMs + step * 0.001; at += step) {
    ticks.push(Number(at.toPrecision(12)));
  }
  return ticks;
}
