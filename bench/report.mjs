// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The tables of a run.

import { loadavg } from 'node:os';

import { threadedCases } from './cases.mjs';
import { figures, judge, workOut } from './figures.mjs';
import { quantile } from './harness.mjs';

const minimum = (values) => (values.length > 0 ? Math.min(...values) : NaN);
const median = (values) => (values.length > 0 ? quantile(values, 0.5) : NaN);

// Three digits, and no less than whole numbers.
export function round(value) {
  if (value === undefined || Number.isNaN(value)) {
    return '–';
  }
  return Math.abs(value) >= 100 ? value.toFixed(0) : value.toPrecision(3);
}

const percent = (share) => `${(share * 100).toFixed(1)} %`;

// The first column to the left, the others to the right.
export function table(rows) {
  const widths = rows[0].map((_, column) => Math.max(...rows.map((row) => row[column].length)));
  const line = (row) =>
    row.map((text, column) =>
      column === 0 ? text.padEnd(widths[column]) : text.padStart(widths[column])
    );
  return `${rows.map((row) => line(row).join('  ').trimEnd()).join('\n')}\n`;
}

const least = (figure, build, peer) => workOut(figure, build.view(peer, minimum));

// The ratio of a figure's least costs in this build and the other; NaN without another.
function ratioOf(figure, { build, against, peer }) {
  return against ? least(figure, build, peer).cost / least(figure, against, peer).cost : NaN;
}

export function figureTable(run) {
  const { build, against, peer } = run;
  const head = ['Figure', 'in', 'minimum', 'median', against?.name ?? 'other', 'ratio'];
  const rows = figures.map((figure) => [
    figure.control ? `${figure.what} (control)` : figure.what,
    figure.unit,
    round(least(figure, build, peer).value),
    round(workOut(figure, build.view(peer, median)).value),
    round(against ? least(figure, against, peer).value : NaN),
    round(ratioOf(figure, run)),
  ]);
  return table([head, ...rows]);
}

// How the minima stand to `aims`, as in aims.json; on a machine that is not quiet, what needs that
// is not judged.
export function aimTable(run, { commit, aims }, quiet) {
  const rows = aims.map(({ figure: id, ratio, ...bounds }) => {
    const figure = figures.find((one) => one.id === id);
    const comparable = run.against?.name === commit;
    const own = least(figure, run.build, run.peer).value;
    const reached = ratio ? (comparable ? ratioOf(figure, run) : NaN) : own;
    return [
      figure.what,
      ratio ? `of ${commit}` : figure.unit,
      round(reached),
      ...[bounds.atLeast, bounds.then].map((bound) => `${bound ?? ''}`),
      figure.needsQuiet && !quiet ? 'not judged' : judge(reached, bounds),
    ];
  });
  return table([['Aim', 'in', 'reached', 'at least', 'then', 'keeps'], ...rows]);
}

// Every series of measurements: { what, name, samples }.
function seriesOf({ build, against, peer }) {
  const settingsOf = ({ name: commit, samples }) =>
    Object.entries(samples).flatMap(([setting, cases]) =>
      Object.entries(cases).map(([name, series]) => ({
        what: `${commit} ${setting} ${name}`,
        name,
        samples: series,
      }))
    );
  const addon = Object.entries(peer.samples).map(([name, samples]) => ({
    what: `Node add-on ${name}`,
    name,
    samples,
  }));
  return [...settingsOf(build), ...(against ? settingsOf(against) : []), ...addon];
}

export function caseTable(run) {
  const head = ['Case', 'minimum', 'median', 'passed', 'spread', 'switches per round'];
  const rows = seriesOf(run).map(({ what, name, samples }) => [
    `${what}${threadedCases.has(name) ? ' (threads)' : ''}`,
    `${round(samples.minimum)} ns`,
    `${round(samples.median)} ns`,
    `${round(samples.medianWall)} ns`,
    percent(samples.spread),
    (samples.switches / samples.processor.length).toFixed(1),
  ]);
  return table([head, ...rows]);
}

const mean = (values) => values.reduce((one, other) => one + other, 0) / values.length;

// The share of the time that single threads waited for a processor.
function waitedShare(series) {
  const single = series.filter(({ name }) => !threadedCases.has(name));
  const used = single.flatMap(({ samples: { processor, wall } }) =>
    processor.map((nanoseconds, index) => nanoseconds / wall[index])
  );
  return Math.max(0, 1 - mean(used)); // the engine has threads of its own
}

// By how much the same code differed between the builds, at most; NaN without another.
function controlDifference(run) {
  const ratios = figures.filter(({ control }) => control).map((figure) => ratioOf(figure, run));
  return Math.max(...ratios.map((ratio) => Math.abs(ratio - 1)));
}

const quietSpread = 0.05;
const quietWait = 0.02;
const quietControl = 0.03;

// How far the machine let the run alone.
export function noise(run) {
  const series = seriesOf(run);
  const spreads = series.map(({ samples }) => samples.spread);
  const spread = quantile(spreads, 0.5);
  const waited = waitedShare(series);
  const control = controlDifference(run);
  return {
    quiet: spread <= quietSpread && waited <= quietWait && !(control > quietControl),
    spread,
    worstSpread: Math.max(...spreads),
    waited,
    switches: series.reduce((count, { samples }) => count + samples.switches, 0),
    control,
    load: loadavg()[0],
  };
}

export function noiseText(measured) {
  const { quiet, spread, worstSpread, waited, switches, control, load } = measured;
  const between = Number.isNaN(control)
    ? ''
    : `  the controls differ by up to ${percent(control)} between the commits\n`;
  return (
    `Noise: ${quiet ? 'the machine was quiet' : 'the machine was BUSY: do not quote this run'}\n` +
    `  middle half of the rounds: ${percent(spread)} of the median, at worst ` +
    `${percent(worstSpread)}\n` +
    `  waited for a processor ${percent(waited)} of the time, ${switches} involuntary switches\n` +
    `${between}  load average ${load.toFixed(1)}\n`
  );
}
