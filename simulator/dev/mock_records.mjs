// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the development server remembers of what happened: log, messages, profiling marks.

import { timeNs } from './mock_state.mjs';

const line = { pid: 4711, tid: 4712, priority: 4, letter: 'I', tag: 'QM_WEBAPI', text: 'a line' };

export class MockRecords {
  #tell;
  #log = [];
  #logged = 0;
  #trace = [];
  #markers = [];

  constructor(tell) {
    this.#tell = tell;
  }

  /** @param {object} given count, and the parts of a line; many lines are numbered from 0 */
  write({ count = 1, ...given }) {
    const lines = Array.from({ length: count }, (_, index) => ({
      ...line,
      ...given,
      seq: ++this.#logged,
      time_ns: timeNs(),
      text: count > 1 ? `${given.text ?? line.text} ${index}` : (given.text ?? line.text),
    }));
    this.#log.push(...lines);
    this.#tell('log', lines);
    return null;
  }

  call({ payload, reply, us, peer = 'dravelt.orvane', ...more }) {
    const record = {
      seq: this.#trace.length + 1,
      time_ns: timeNs(),
      context: 1,
      direction: 'fromPage',
      kind: 'nativeSync',
      peer,
      payload: typeof payload === 'string' ? payload : JSON.stringify(payload),
      reply: typeof reply === 'string' ? reply : JSON.stringify(reply),
      us,
      ...more,
    };
    this.#trace.push(record);
    this.#tell('trace', [record]);
    return null;
  }

  mark({ text, time_ns: time = timeNs() }) {
    const marker = { time_ns: time, length: text.length, text };
    this.#markers.push(marker);
    this.#tell('kernelMarker', marker);
    return null;
  }

  #clear(list) {
    list.length = 0;
    return null;
  }

  methods(app) {
    return {
      'log.write': (params) => this.write(params),
      'log.list': ({ since = 0, limit = 5000 }) => {
        const lines = this.#log.filter((each) => each.seq > since).slice(0, limit);
        return { lines, next: lines.at(-1)?.seq ?? since };
      },
      'log.clear': () => this.#clear(this.#log),
      'trace.list': ({ since = 0, limit = 5000 }) => {
        const records = this.#trace.filter((each) => each.seq > since).slice(0, limit);
        return { records, next: records.at(-1)?.seq ?? since };
      },
      'trace.clear': () => this.#clear(this.#trace),
      'trace.export': () => ({
        orvane: 1,
        created: new Date().toISOString(),
        app,
        profile: 'uhd',
        records: this.#trace,
      }),
      'markers.list': () => this.#markers,
      'console.list': () => ({ entries: [], next: 0 }),
      'explain.list': () => [],
      'dev.call': (params) => this.call(params),
      'dev.mark': (params) => this.mark(params),
    };
  }
}
