// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The page context's connection to the runtime, which outlives the loss of a socket. Messages that
// the server numbers reach `receive` in order and once each; requests that a lost socket may have
// swallowed are sent again when the server says that it never saw them.
//
// Used in the page and in the worker: it lives in the one of them that owns the socket.

import { addListener, closeSocket, makeSocket, now, sendOnSocket } from './builtins.js';
import { startTimer, stringify } from './builtins.js';
import { parseMessage } from './messages.js';

const firstRetryMs = 50;
const longestRetryMs = 1000;
// Calls that wait this long without a connection fail: nothing will answer them soon.
const patienceMs = 2000;
// After this long the server has closed the context, or is gone itself.
const lostMs = 6000;
// A connection that was never up after so many tries is not allowed, and not tried any more.
const mostFirstTries = 8;
const messagesPerAcknowledgement = 32;
const acknowledgeAfterMs = 250;
const mostReports = 1000;

export const unreachable =
  'The connection to the runtime is lost; if "orvane run" has ended, start it again.';

export class Connection {
  // `address(last)` is the socket's URL for a connection that has received message `last`.
  // `listener` has receive(message, data), with what came as it came, and may have linked(), lost()
  // and failed(): there is no connection and will be none.
  constructor(address, listener) {
    this.address = address;
    this.listener = listener;
    this.socket = null;
    this.ready = false; // between hello and the loss of the socket
    this.lastSeq = 0;
    this.acknowledged = 0;
    this.acknowledging = false;
    this.unanswered = []; // { id, data, answered: whether an answer will come }
    this.reports = []; // texts that wait for a connection
    this.retryMs = firstRetryMs;
    this.downSince = now();
    this.wasUp = false;
    this.tries = 0;
    this.ended = false;
  }

  open() {
    if (this.ended) {
      return;
    }
    let socket;
    try {
      socket = makeSocket(this.address(this.lastSeq));
    } catch (error) {
      this.fail();
      return;
    }
    this.socket = socket;
    addListener(socket, 'message', (event) => this.receive(socket, event.data));
    addListener(socket, 'close', () => this.lose(socket));
  }

  // For good: nothing is sent or received any more.
  end() {
    this.ended = true;
    this.ready = false;
    if (this.socket !== null) {
      closeSocket(this.socket);
    }
  }

  // A message that has an effect. `answered` is false for those that the server does not answer.
  request(id, data, answered) {
    this.unanswered.push({ id, data, answered });
    if (this.ready) {
      sendOnSocket(this.socket, data);
    } else if (answered && now() - this.downSince > patienceMs) {
      this.failWaiting();
    }
  }

  // A message without an effect on the set. It is not sent twice.
  report(text) {
    if (this.ready) {
      sendOnSocket(this.socket, text);
    } else if (this.reports.length < mostReports) {
      this.reports.push(text);
    }
  }

  receive(socket, data) {
    if (socket !== this.socket || this.ended) {
      return;
    }
    const message = parseMessage(data);
    if (message.type === 'hello') {
      this.start(message.received);
      return;
    }
    if (message.seq !== undefined) {
      if (message.seq <= this.lastSeq) {
        return;
      }
      this.lastSeq = message.seq;
      this.acknowledgeSoon();
    }
    if (message.type === 'answer') {
      this.forget(message.id);
    }
    if (message.type === 'gone') {
      this.failWaiting();
      this.end();
    }
    this.listener.receive(message, data);
  }

  start(received) {
    this.ready = true;
    this.wasUp = true;
    this.retryMs = firstRetryMs;
    this.unanswered = this.unanswered.filter(({ id, answered }) => answered || id > received);
    for (const { id, data } of this.unanswered) {
      if (id > received) {
        sendOnSocket(this.socket, data);
      }
    }
    this.reports.splice(0).forEach((text) => sendOnSocket(this.socket, text));
    this.listener.linked?.();
  }

  // The server reads in order: with the answer to a request it has seen the posts before it.
  forget(answeredId) {
    this.unanswered = this.unanswered.filter(
      ({ id, answered }) => id > answeredId || (answered && id !== answeredId)
    );
  }

  acknowledgeSoon() {
    if (this.lastSeq - this.acknowledged >= messagesPerAcknowledgement) {
      this.acknowledge();
    } else if (!this.acknowledging) {
      this.acknowledging = true;
      startTimer(() => {
        this.acknowledging = false;
        this.acknowledge();
      }, acknowledgeAfterMs);
    }
  }

  acknowledge() {
    if (this.ready && this.acknowledged < this.lastSeq) {
      this.acknowledged = this.lastSeq;
      sendOnSocket(this.socket, stringify({ type: 'ack', seq: this.lastSeq }));
    }
  }

  lose(socket) {
    if (socket !== this.socket || this.ended) {
      return;
    }
    this.socket = null;
    if (this.ready) {
      this.ready = false;
      this.acknowledged = 0;
      this.downSince = now();
    }
    const downMs = now() - this.downSince;
    if (downMs > patienceMs) {
      this.failWaiting();
    }
    if (this.wasUp && downMs > lostMs) {
      this.listener.lost?.();
    }
    this.tries += 1;
    if (!this.wasUp && this.tries >= mostFirstTries) {
      this.fail();
      return;
    }
    startTimer(() => this.open(), this.retryMs);
    this.retryMs = Math.min(this.retryMs * 2, longestRetryMs);
  }

  fail() {
    this.failWaiting();
    this.end();
    this.listener.failed?.();
  }

  failWaiting() {
    const failed = this.unanswered.filter(({ answered }) => answered);
    this.unanswered = this.unanswered.filter(({ answered }) => !answered);
    for (const { id } of failed) {
      const answer = { type: 'answer', id, error: unreachable };
      this.listener.receive(answer, stringify(answer));
    }
  }
}
