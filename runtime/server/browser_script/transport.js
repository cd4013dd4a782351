// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// How a page context's messages reach the server and come back. A page that is cross-origin
// isolated has a worker that owns the socket: a call spins on shared memory until the worker has
// the answer. Every other page, and an isolated one until its worker is ready, calls by blocking
// requests; these carry its posts too, since a socket beside them could be overtaken.

import { AnswerBuffer, answerBufferBytes } from './answer_buffer.js';
import { addListener, bodyOf, makeRequest, makeSharedBuffer, makeWorker } from './builtins.js';
import { now, openRequest, postToWorker, sendRequest, setHeader, statusOf } from './builtins.js';
import { startTimer } from './builtins.js';
import { parseMessage } from './messages.js';
import { unreachable, Connection } from './connection.js';

// The server keeps to the deadline itself and says more about it, so the page waits a little
// longer.
const graceMs = 2000;

export class Transport {
  // `boot` is what the server gave the page. `listener` has receive(message) for what the server
  // sends of its own accord and for late answers, lost() and failed().
  constructor(boot, listener) {
    const query = `?token=${boot.token}&context=${boot.context}`;
    this.origin = globalThis.origin; // a srcdoc document's location has none
    this.socketAddress = `${this.origin.replace(/^http/, 'ws')}/.orvane/socket${query}&last=`;
    this.syncAddress = `${this.origin}/.orvane/sync${query}`;
    this.byeAddress = `${this.origin}/.orvane/bye${query}`;
    this.waitMs = boot.deadlineMs + graceMs;
    this.listener = listener;
    this.buffer = null;
    this.worker = null;
    this.connection = null;
    this.problem = null; // why there is no worker although there could be one
    this.early = []; // reports that a worker was given before it was known to work
    if (!(globalThis.crossOriginIsolated && this.startWorker(boot.workerUrl))) {
      this.connect();
    }
  }

  // "worker" once calls go through the worker.
  get kind() {
    return this.worker !== null && this.buffer.isLinked() ? 'worker' : 'request';
  }

  // Sends `data`, the message `id`, and blocks for the answer. Throws when there is none.
  call(id, data) {
    if (this.kind === 'request') {
      return this.callByRequest(data);
    }
    this.buffer.want(id);
    postToWorker(this.worker, [id, data, true]);
    const answer = this.buffer.read(id, now() + this.waitMs);
    if (answer === null) {
      throw new Error(`there was no answer within ${this.waitMs} ms`);
    }
    return parseMessage(answer);
  }

  // Sends a message whose answer, if there is one, reaches the listener later.
  send(id, data, answered) {
    if (this.kind === 'worker') {
      postToWorker(this.worker, [id, data, answered]);
      return;
    }
    const answer = this.callByRequest(data);
    if (answered) {
      startTimer(() => this.listener.receive(answer), 0);
    }
  }

  // Sends a message that nothing on the set depends on.
  report(text) {
    if (this.worker === null) {
      this.connection.report(text);
      return;
    }
    postToWorker(this.worker, text);
    if (!this.buffer.isLinked()) {
      this.early.push(text);
    }
  }

  // The server has told that the page is to go; nothing is sent any more.
  end() {
    this.connection?.end();
  }

  startWorker(path) {
    try {
      const memory = makeSharedBuffer(answerBufferBytes);
      const worker = makeWorker(this.origin + (path ?? '/.orvane/worker.js'), {
        name: 'orvane',
      });
      this.buffer = new AnswerBuffer(memory);
      this.worker = worker;
      addListener(worker, 'message', ({ data }) => this.receiveFromWorker(data));
      addListener(worker, 'error', () => this.replaceWorker());
      postToWorker(worker, { memory, address: this.socketAddress });
      return true;
    } catch (error) {
      this.problem =
        "The page could not start the runtime's worker, so that synchronous calls are slow: " +
        error.message;
      return false;
    }
  }

  receiveFromWorker(data) {
    if (typeof data.event === 'string') {
      this.listener[data.event]();
    } else {
      this.listener.receive(parseMessage(data));
    }
  }

  // A worker that never came up: the page's policy forbids it, or its file did not load.
  replaceWorker() {
    if (this.worker !== null && !this.buffer.isLinked()) {
      this.worker = null;
      this.connect();
      this.early.forEach((text) => this.connection.report(text));
    }
  }

  connect() {
    this.connection = new Connection((last) => this.socketAddress + last, {
      receive: (message) => this.listener.receive(message),
      lost: () => this.listener.lost(),
      failed: () => this.listener.failed(),
    });
    this.connection.open();
  }

  callByRequest(data) {
    const request = makeRequest();
    try {
      openRequest(request, 'POST', this.syncAddress, false);
      if (typeof data !== 'string') {
        setHeader(request, 'Content-Type', 'application/octet-stream');
      }
      sendRequest(request, data);
    } catch (error) {
      throw new Error(unreachable, { cause: error });
    }
    const body = bodyOf(request);
    if (statusOf(request) !== 200) {
      throw new Error(`the runtime refused it with ${statusOf(request)}: ${body}`);
    }
    return parseMessage(body);
  }
}
