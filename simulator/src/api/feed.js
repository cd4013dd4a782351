// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A numbered stream that is both pushed and listed: the log, the trace. What was pushed while the
// connection was away is fetched, in order and once, so that nothing is missing or doubled.

const pageLimit = 5000;

export class Feed {
  #list;
  #add;
  #last = 0;
  #held = null;

  /**
   * @param {(since: number, limit: number) => Promise<{items: any[], next: number}>} list
   * @param {(items: any[]) => void} add
   */
  constructor(list, add) {
    this.#list = list;
    this.#add = add;
  }

  /** Fetches everything newer than what is here; what is pushed meanwhile waits. */
  async catchUp() {
    if (this.#held) {
      return;
    }
    this.#held = [];
    try {
      for (;;) {
        const { items } = await this.#list(this.#last, pageLimit);
        if (items.length === 0) {
          break;
        }
        this.#take(items);
      }
    } finally {
      const held = this.#held;
      this.#held = null;
      this.#take(held);
    }
  }

  push(items) {
    if (this.#held) {
      this.#held.push(...items);
      return;
    }
    const first = items[0]?.seq;
    if (first !== undefined && first > this.#last + 1) {
      this.#fill(items);
      return;
    }
    this.#take(items);
  }

  async #fill(items) {
    const caughtUp = this.catchUp();
    this.#held?.push(...items);
    await caughtUp.catch(() => this.#take(items));
  }

  #take(items) {
    const fresh = items.filter((item) => item.seq === undefined || item.seq > this.#last);
    if (fresh.length === 0) {
      return;
    }
    this.#last = fresh[fresh.length - 1].seq ?? this.#last;
    this.#add(fresh);
  }
}
