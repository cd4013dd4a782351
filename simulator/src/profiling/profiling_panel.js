// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What an application recorded with recordProfiling: a timeline with the gaps between the labels.

import { html, useState } from '../view.js';
import { set } from '../state/set.js';
import { markers } from '../state/streams.js';
import { Empty, IconButton, Select } from '../ui/controls.js';
import { downloadJson } from '../ui/download.js';
import { clockTime, duration, fileStamp, plural } from '../ui/format.js';
import { profilingRuns } from './records.js';
import { Timeline } from './timeline.js';

const publishedKey = 'memory/runningApps/performance_data';

function exportRuns(runs) {
  const points = runs.map((run) =>
    run.map(({ label, app, timeNs, gapMs, fromStartMs }) => ({
      label,
      app,
      time_ns: timeNs,
      gapMs,
      fromStartMs,
    }))
  );
  downloadJson(`profiling-${fileStamp()}.json`, { orvane: 1, runs: points });
}

function published() {
  return set.settings.value?.find((each) => each.key === publishedKey)?.value ?? '';
}

function runTitle(run, index) {
  const length = duration(run[run.length - 1].fromStartMs);
  return `Record ${index + 1} · ${clockTime(run[0].timeNs)} · ${length}`;
}

export function ProfilingPanel() {
  const [chosen, setChosen] = useState(null);
  const runs = profilingRuns(markers.value);
  const index = chosen !== null && chosen < runs.length ? chosen : runs.length - 1;
  const run = runs[index];
  if (!run) {
    return html`<${Empty} title="No label recorded yet"
      >An application records one with dravelt.orvane.recordProfiling("first picture"); the
      milliseconds between its labels appear here.<//
    >`;
  }
  const choices = runs.map((each, at) => [String(at), runTitle(each, at)]);
  return html`<div class="toolbar" role="toolbar" aria-label="Profiling">
      <${Select}
        label="Which record"
        value=${String(index)}
        options=${choices}
        onChange=${(value) => setChosen(Number(value) === runs.length - 1 ? null : Number(value))}
      />
      <span class="toolbar-count">
        ${plural(run.length, 'label')}${run[0].app && ` of ${run[0].app}`}
        ${published() && html` · published: <span class="mono">${published()}</span>`}
      </span>
      <${IconButton}
        icon="download"
        label="Export every record as JSON"
        onClick=${() => exportRuns(runs)}
      />
    </div>
    <${Timeline} run=${run} />`;
}
