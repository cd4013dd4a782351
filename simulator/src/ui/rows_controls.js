// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The parts that every panel over a stream of rows has.

import { html } from '../view.js';
import { IconButton } from './controls.js';
import { VirtualList } from './virtual_list.js';

/** @param {{view: import('./rows_view.js').RowsView}} props */
export function RowsButtons({ view }) {
  return html`<${IconButton}
      icon=${view.paused ? 'play' : 'pause'}
      label=${view.paused ? 'Go on' : 'Pause'}
      pressed=${view.paused}
      onClick=${view.pause}
    />
    <${IconButton}
      icon="newest"
      label="Keep the newest in sight"
      pressed=${view.follow}
      disabled=${view.paused}
      onClick=${() => view.setFollow(!view.follow)}
    />`;
}

/** @param {{view: import('./rows_view.js').RowsView, id: string, label: string,
 *           rowHeight: number, rowClass: Function, renderRow: Function}} props */
export function RowsList({ view, ...props }) {
  return html`<${VirtualList}
    rows=${view.rows}
    version=${view.version}
    follow=${view.follow}
    onFollow=${view.setFollow}
    selected=${view.selected}
    onSelect=${view.select}
    ...${props}
  />`;
}
