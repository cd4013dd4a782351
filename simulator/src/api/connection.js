// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The simulator's one socket to `orvane run`: calls with answers, and events. It comes back by
// itself after a loss; what was pending then fails.

const firstDelayMs = 250;
const longestDelayMs = 4000;

/** @typedef {'connecting' | 'open' | 'lost' | 'refused'} ConnectionState */

export class Connection {
  #url;
  #handlers;
  #socket = null;
  #pending = new Map();
  #lastId = 0;
  #delayMs = firstDelayMs;

  /**
   * @param {string} url of the API, with the token
   * @param {{onEvents: (events: {name: string, data: any}[]) => void,
   *          onState: (state: ConnectionState) => void}} handlers
   */
  constructor(url, handlers) {
    this.#url = url;
    this.#handlers = handlers;
    this.#open();
  }

  /** @returns {Promise<any>} rejects with an Error whose message is the server's sentence */
  call(method, params = {}) {
    if (this.#socket?.readyState !== WebSocket.OPEN) {
      return Promise.reject(new Error('There is no connection to orvane run at the moment.'));
    }
    const id = ++this.#lastId;
    this.#socket.send(JSON.stringify({ id, method, params }));
    return new Promise((resolve, reject) => {
      this.#pending.set(id, { resolve, reject });
    });
  }

  #open() {
    this.#handlers.onState('connecting');
    this.#socket = new WebSocket(this.#url);
    let wasOpen = false;
    this.#socket.onopen = () => {
      wasOpen = true;
      this.#delayMs = firstDelayMs;
      this.#handlers.onState('open');
    };
    this.#socket.onmessage = ({ data }) => this.#receive(JSON.parse(data));
    this.#socket.onclose = ({ code }) => this.#closed(code, wasOpen);
  }

  #receive(message) {
    if (message.events) {
      this.#handlers.onEvents(message.events);
      return;
    }
    const call = this.#pending.get(message.id);
    this.#pending.delete(message.id);
    if (message.error) {
      call?.reject(new Error(message.error.message));
    } else {
      call?.resolve(message.result);
    }
  }

  async #closed(code, wasOpen) {
    for (const { reject } of this.#pending.values()) {
      reject(new Error('The connection to orvane run was lost before it answered.'));
    }
    this.#pending.clear();
    if (code === 4403 || (!wasOpen && (await serverAnswers()))) {
      this.#handlers.onState('refused');
      return;
    }
    this.#handlers.onState('lost');
    setTimeout(() => this.#open(), this.#delayMs);
    this.#delayMs = Math.min(this.#delayMs * 2, longestDelayMs);
  }
}

/** A socket that never opened although the server is there was refused. */
async function serverAnswers() {
  try {
    return (await fetch('/icon.svg', { cache: 'no-store' })).ok;
  } catch {
    return false;
  }
}
