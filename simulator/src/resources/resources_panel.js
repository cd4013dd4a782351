// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// CPU and memory of the library's process over time.

import { html, useEffect, useMemo } from '../view.js';
import { Empty } from '../ui/controls.js';
import { Chart } from './chart.js';
import { samples, samplingError, startSampling } from './sampling.js';

function Figure({ title, unit, stroke, column }) {
  const [times] = samples.value;
  const values = samples.value[column];
  const data = useMemo(() => [times, values], [times, values]);
  const newest = values[values.length - 1];
  const peak = Math.max(...values);
  return html`<section class="figure">
    <header>
      <h3>${title}</h3>
      <p><strong>${newest}${unit}</strong> <span class="muted">highest ${peak}${unit}</span></p>
    </header>
    <${Chart}
      data=${data}
      stroke=${stroke}
      unit=${unit}
      label=${`${title}: now ${newest}${unit}, highest ${peak}${unit}`}
    />
  </section>`;
}

export function ResourcesPanel() {
  useEffect(startSampling, []);
  const [times] = samples.value;
  if (times.length === 0) {
    return samplingError.value
      ? html`<${Empty} title="No figures">${samplingError.value}<//>`
      : html`<${Empty} title="Measuring…"
          >The figures come from the library's own getSystemStat, once a second while this panel is
          open.<//
        >`;
  }
  return html`${
      samplingError.value && html`<p class="panel-error" role="alert">${samplingError.value}</p>`
    }
    <div class="figures">
      <${Figure} title="CPU" unit=" %" stroke="--chart-1" column=${1} />
      <${Figure} title="Memory" unit=" MiB" stroke="--chart-2" column=${2} />
    </div>`;
}
