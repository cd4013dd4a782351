// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The few pictures of the page: strokes on a grid of 16, in the colour of the text around them.

import { html } from '../view.js';

const paths = {
  alert: 'M8 1.8 15 14H1L8 1.8ZM8 6.2v3.6M8 11.9v.2',
  back: 'M6.5 3.5 2.5 7.5l4 4M2.8 7.5h6.7a4 4 0 0 1 0 8',
  backspace: 'M5.5 3.5h9v9h-9L1.5 8l4-4.5ZM8 6.2l3.6 3.6M11.6 6.2 8 9.8',
  camera: 'M1.5 5h3l1.3-2h4.4l1.3 2h3v8.5h-13V5ZM8 11.5a2.6 2.6 0 1 0 0-5.2 2.6 2.6 0 0 0 0 5.2Z',
  check: 'm2.8 8.5 3.4 3.4 7-7.6',
  chevron: 'm6 3.5 4.5 4.5L6 12.5',
  close: 'm3.5 3.5 9 9M12.5 3.5l-9 9',
  copy: 'M5.5 5.5h8v8h-8v-8ZM10.5 5.5v-3h-8v8h3',
  down: 'm3.5 6 4.5 4.5L12.5 6',
  download: 'M8 2v7.6M5 6.8l3 3 3-3M2.5 10v3.5h11V10',
  enter: 'M13 3.5V8H3.5M6.6 4.8 3.4 8l3.2 3.2',
  forward: 'm3 4 4.7 4L3 12V4ZM8.4 4l4.7 4-4.7 4V4Z',
  home: 'm1.8 8 6.2-5.5L14.2 8M3.6 6.6v7h3.1v-4h2.6v4h3.1v-7',
  keyboard: 'M1.5 4h13v8.5h-13V4ZM4 6.5h.1M6.6 6.5h.1M9.2 6.5h.1M11.9 6.5h.1M5 10h6',
  left: 'M10 3.5 5.5 8l4.5 4.5',
  minus: 'M3.5 8h9',
  moon: 'M13.6 9.6A6 6 0 0 1 6.4 2.4a6 6 0 1 0 7.2 7.2Z',
  mute: 'M2 6h2.5L8 3v10L4.5 10H2V6ZM11 6.2l3.5 3.6M14.5 6.2 11 9.8',
  openTab: 'M9.5 2.5h4v4M13.2 2.8 7.5 8.5M11.5 9v4.5h-9v-9H7',
  newest: 'M8 2v8.2M4.6 7 8 10.4 11.4 7M3 13.5h10',
  next: 'm3.5 4 6 4-6 4V4ZM12 4v8',
  pause: 'M5.5 3.8v8.4M10.5 3.8v8.4',
  play: 'm5 3.5 7.5 4.5L5 12.5v-9Z',
  playPause: 'm2.5 4 5 4-5 4V4ZM10.2 4v8M13.2 4v8',
  plus: 'M8 3.5v9M3.5 8h9',
  power: 'M8 2v5.5M4.6 4.2a5.2 5.2 0 1 0 6.8 0',
  previous: 'm12.5 4-6 4 6 4V4ZM4 4v8',
  record: 'M8 12a4 4 0 1 0 0-8 4 4 0 0 0 0 8Z',
  reload: 'M13 3v3.5H9.5M13 6.5A5.4 5.4 0 1 0 13.4 9',
  rewind: 'M13 4 8.3 8 13 12V4ZM7.6 4 2.9 8l4.7 4V4Z',
  right: 'M6 3.5 10.5 8 6 12.5',
  search: 'M7 11.5a4.5 4.5 0 1 0 0-9 4.5 4.5 0 0 0 0 9ZM10.3 10.3l3.4 3.4',
  sidebar: 'M1.8 3h12.4v10H1.8V3ZM10 3v10',
  source: 'M1.8 3.5h12.4v9H1.8v-9ZM5 8h5M7.8 5.7 10.2 8l-2.4 2.3',
  stop: 'M4 4h8v8H4V4Z',
  sun:
    'M8 11a3 3 0 1 0 0-6 3 3 0 0 0 0 6ZM8 1.2v1.4M8 13.4v1.4M1.2 8h1.4M13.4 8h1.4M3.2 3.2l1 1' +
    'M11.8 11.8l1 1M3.2 12.8l1-1M11.8 4.2l1-1',
  system: 'M1.8 2.8h12.4v8.4H1.8V2.8ZM5.5 13.5h5M8 11.2v2.3',
  trash: 'M2.5 4.2h11M6 4V2.5h4V4M4 4.2l.6 9.3h6.8l.6-9.3M6.6 6.8v4M9.4 6.8v4',
  up: 'M3.5 10 8 5.5l4.5 4.5',
  volume: 'M2 6h2.5L8 3v10L4.5 10H2V6ZM10.6 5.6a3.4 3.4 0 0 1 0 4.8M12.5 3.8a6 6 0 0 1 0 8.4',
};

const filled = new Set([
  'forward',
  'next',
  'play',
  'playPause',
  'previous',
  'record',
  'rewind',
  'stop',
]);

/** Decoration: what it stands for is said by a label beside it. */
export function Icon({ name, size = 16 }) {
  return html`<svg
    class="icon"
    viewBox="0 0 16 16"
    width=${size}
    height=${size}
    aria-hidden="true"
    focusable="false"
  >
    <path d=${paths[name]} fill=${filled.has(name) ? 'currentColor' : 'none'} />
  </svg>`;
}
