// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// How somebody looks at a stream of rows: the filter, the selection, a pause, and whether the
// newest row is kept in sight. It stays while other panels are open.

import { effect, signal } from '../view.js';
import { count } from './format.js';

export class RowsView {
  #stream;
  #frozen = signal(null); // what there was at the pause, and what the filter shows of it
  #selected = signal(null);
  #follow = signal(true);

  /**
   * @param {import('../state/rows.js').Rows} stream
   * @param {any} filter the first one
   * @param {(filter: any) => (row: any) => boolean} accepts may read signals
   */
  constructor(stream, filter, accepts) {
    this.#stream = stream;
    this.filter = signal(filter);
    effect(() => {
      const accept = accepts(this.filter.value);
      stream.setFilter(accept);
      const frozen = this.#frozen.peek();
      if (frozen) {
        this.#frozen.value = { ...frozen, rows: frozen.all.filter(accept) };
      }
    });
  }

  /** The pause, unless the rows were cleared since. */
  get #pause() {
    const frozen = this.#frozen.value;
    const isOver = this.version < 0 || frozen?.clearings !== this.#stream.clearings;
    return isOver ? null : frozen;
  }

  setFilter(change) {
    this.filter.value = { ...this.filter.value, ...change };
  }

  get version() {
    return this.#stream.version.value;
  }

  get total() {
    return this.version >= 0 ? this.#stream.total : 0;
  }

  /** One array that grows, so whoever draws it is told by the version. */
  get rows() {
    return this.#pause?.rows ?? this.#stream.matching;
  }

  get selected() {
    const row = this.#selected.value;
    return row && this.rows.includes(row) ? row : null;
  }

  /** A selected row is being read: it is not scrolled away. */
  select = (row) => {
    this.#selected.value = row;
    if (row) {
      this.#follow.value = false;
    }
  };

  get follow() {
    return this.#follow.value && !this.paused;
  }

  setFollow = (follow) => {
    this.#follow.value = follow;
  };

  get paused() {
    return this.#pause !== null;
  }

  pause = () => {
    const { all, matching, total, clearings } = this.#stream;
    this.#frozen.value = this.paused
      ? null
      : { all: all.slice(), rows: matching.slice(), total, clearings };
    this.#follow.value = !this.paused;
  };

  /** How many rows are shown, of how many; and how many came since the pause. */
  countText(total) {
    const waiting = this.#pause ? this.total - this.#pause.total : 0;
    const news = waiting > 0 ? `${count(waiting)} new · ` : '';
    return `${news}${count(this.rows.length)} of ${total}`;
  }
}
