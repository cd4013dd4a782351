// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Rows that arrive quickly, are filtered, and are seen a screenful at a time: the log, the trace.
// Adding costs little; whoever draws is told once per frame.

import { signal } from '../view.js';

export class Rows {
  /** Counts up when there is something new to draw. */
  version = signal(0);
  total = 0; // ever added; each row's number is its `row`
  clearings = 0;
  matching = []; // what the filter lets through, oldest first
  #all = [];
  #accepts = () => true;
  #capacity;
  #scheduled = false;

  /** @param {number} capacity beyond it the oldest go */
  constructor(capacity) {
    this.#capacity = capacity;
  }

  get all() {
    return this.#all;
  }

  add(rows) {
    for (const row of rows) {
      row.row = ++this.total;
      this.#all.push(row);
      if (this.#accepts(row)) {
        this.matching.push(row);
      }
    }
    if (this.#all.length > this.#capacity * 1.1) {
      this.#trim();
    }
    this.#schedule();
  }

  setFilter(accepts) {
    this.#accepts = accepts;
    this.matching = this.#all.filter(accepts);
    this.#tell();
  }

  clear() {
    this.#all = [];
    this.matching = [];
    this.total = 0;
    ++this.clearings;
    this.#tell();
  }

  #tell() {
    this.version.value = this.version.peek() + 1; // whoever tells need not be told
  }

  #trim() {
    const gone = this.#all.splice(0, this.#all.length - this.#capacity);
    const last = gone[gone.length - 1].row;
    const kept = this.matching.findIndex((row) => row.row > last);
    this.matching = kept < 0 ? [] : this.matching.slice(kept);
  }

  #schedule() {
    if (this.#scheduled) {
      return;
    }
    this.#scheduled = true;
    // A hidden tab gets no frames; it draws when it is seen again.
    requestAnimationFrame(() => {
      this.#scheduled = false;
      this.#tell();
    });
  }
}
