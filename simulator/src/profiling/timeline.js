// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Recorded labels on an axis of time, each with the gap that it ends.

import { html } from '../view.js';
import { duration } from '../ui/format.js';
import { axisTicks } from './records.js';

function tickText(ms) {
  return ms < 1000 ? `${ms} ms` : `${ms / 1000} s`;
}

/** @param {{run: import('./records.js').ProfilingPoint[]}} props */
export function Timeline({ run }) {
  const length = Math.max(run[run.length - 1].fromStartMs, 0.01);
  const percent = (ms) => `${(ms / length) * 100}%`;
  const longest = Math.max(...run.map((point) => point.gapMs ?? 0));
  return html`<div class="timeline">
    <div class="timeline-axis" aria-hidden="true">
      ${axisTicks(length).map(
        (tick) =>
          html`<span key=${tick} class="timeline-tick" style=${{ left: percent(tick) }}
            >${tickText(tick)}</span
          >`
      )}
    </div>
    <ol class="timeline-rows" aria-label="Recorded labels">
      ${run.map((point, index) => {
        const gap = point.gapMs ?? 0;
        const tone = gap > 0 && gap === longest ? 'timeline-bar-longest' : '';
        return html`<li key=${index}>
          <span class="timeline-label" title=${point.label}>${point.label}</span>
          <span class="timeline-gap"
            >${point.gapMs === null ? 'start' : `+${duration(point.gapMs)}`}</span
          >
          <span class="timeline-lane">
            <span
              class=${`timeline-bar ${tone}`}
              style=${{ left: percent(point.fromStartMs - gap), width: percent(gap) }}
            ></span>
          </span>
          <span class="timeline-total">${duration(point.fromStartMs)}</span>
        </li>`;
      })}
    </ol>
  </div>`;
}
