// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// One figure over time.

import uPlot from 'uplot';
import { html, useEffect, useRef } from '../view.js';
import { preferences } from '../state/preferences.js';

function colour(name) {
  return getComputedStyle(document.documentElement).getPropertyValue(name).trim();
}

/** The colour that a custom property has in the theme in force. */
function resolved(name) {
  const probe = document.createElement('span');
  probe.style.color = `var(${name})`;
  document.body.append(probe);
  const { color } = getComputedStyle(probe);
  probe.remove();
  return color || colour(name);
}

function options({ width, height, stroke, unit }) {
  const line = resolved(stroke);
  const axis = {
    stroke: resolved('--muted'),
    grid: { stroke: resolved('--line'), width: 1 },
    ticks: { show: false },
    font: '11px "Inter Variable", sans-serif',
  };
  return {
    width,
    height,
    legend: { show: false },
    cursor: { y: false, points: { size: 6 } },
    scales: { y: { range: (plot, low, high) => [0, Math.max(high * 1.15, 5)] } },
    axes: [
      { ...axis, size: 28, space: 70, values: (plot, ticks) => ticks.map(timeText) },
      { ...axis, size: 52, values: (plot, ticks) => ticks.map((tick) => `${tick}${unit}`) },
    ],
    series: [
      {},
      { stroke: line, width: 1.5, fill: line.replace('rgb(', 'rgba(').replace(')', ', 0.12)') },
    ],
  };
}

function timeText(seconds) {
  return new Date(seconds * 1000).toLocaleTimeString('en-GB');
}

/** @param {{data: [number[], number[]], stroke: string, unit: string, label: string}} props */
export function Chart({ data, stroke, unit, label }) {
  const room = useRef(null);
  const plot = useRef(null);
  const latest = useRef(data);
  latest.current = data;
  const { theme } = preferences.value;

  useEffect(() => {
    const make = (width, height) => {
      plot.current?.destroy();
      plot.current = new uPlot(
        options({ width, height, stroke, unit }),
        latest.current,
        room.current
      );
    };
    const observer = new ResizeObserver(([{ contentRect }]) => {
      make(Math.max(160, contentRect.width), Math.max(60, contentRect.height));
    });
    const scheme = matchMedia('(prefers-color-scheme: dark)');
    const recolour = () => make(room.current.clientWidth, room.current.clientHeight);
    scheme.addEventListener('change', recolour);
    observer.observe(room.current);
    return () => {
      observer.disconnect();
      scheme.removeEventListener('change', recolour);
      plot.current?.destroy();
      plot.current = null;
    };
  }, [theme]);

  useEffect(() => {
    plot.current?.setData(data);
  }, [data]);

  return html`<div class="chart-room" ref=${room} role="img" aria-label=${label}></div>`;
}
