// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// How a page context's messages reach the server and come back. A page that is cross-origin
// isolated has a worker that owns the socket: a call spins on shared memory until the worker has
// the answer. Every other page, and an isolated one until its worker is ready, calls by blocking
// requests; these carry its posts too, since a socket beside them could be overtaken.

import { AnswerBuffer, answerBufferBytes } from './answer_buffer.js';
import { addListener, bodyOf, makeRequest, makeSharedBuffer, makeWorker } from './builtins.js';
import { now, openRequest, parseFrame, postToWorker, sendRequest, statusOf } from './builtins.js';
import { startTimer } from './builtins.js';
import { Link, unreachable } from './link.js';

// The server keeps to the deadline itself and says more about it, so the page waits a little
// longer.
const graceMs = 2000;

export class Transport {
  // `boot` is what the server gave the page. `listener` has receive(frame) for what the server
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
    this.link = null;
    this.problem = null; // why there is no worker although there could be one
    this.early = []; // reports that a worker was given before it was known to work
    if (!(globalThis.crossOriginIsolated && this.startWorker(boot.workerUrl))) {
      this.startLink();
    }
  }

  // "worker" once calls go through the worker.
  get kind() {
    return this.worker !== null && this.buffer.isLinked() ? 'worker' : 'request';
  }

  // Sends `text`, the message `id`, and blocks for the answer, a frame. Throws when there is none.
  call(id, text) {
    if (this.kind === 'request') {
      return this.callByRequest(text);
    }
    this.buffer.want(id);
    postToWorker(this.worker, [id, text, true]);
    const answer = this.buffer.read(id, now() + this.waitMs);
    if (answer === null) {
      throw new Error(`there was no answer within ${this.waitMs} ms`);
    }
    return parseFrame(answer);
  }

  // Sends a message whose answer, if there is one, reaches the listener later.
  send(id, text, answered) {
    if (this.kind === 'worker') {
      postToWorker(this.worker, [id, text, answered]);
      return;
    }
    const frame = this.callByRequest(text);
    if (answered) {
      startTimer(() => this.listener.receive(frame), 0);
    }
  }

  // Sends a message that nothing on the set depends on.
  report(text) {
    if (this.worker === null) {
      this.link.report(text);
      return;
    }
    postToWorker(this.worker, text);
    if (!this.buffer.isLinked()) {
      this.early.push(text);
    }
  }

  // The server has told that the page is to go; nothing is sent any more.
  end() {
    this.link?.end();
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
    if (typeof data === 'string') {
      this.listener.receive(parseFrame(data));
    } else {
      this.listener[data.event]();
    }
  }

  // A worker that never came up: the page's policy forbids it, or its file did not load.
  replaceWorker() {
    if (this.worker !== null && !this.buffer.isLinked()) {
      this.worker = null;
      this.startLink();
      this.early.forEach((text) => this.link.report(text));
    }
  }

  startLink() {
    this.link = new Link((last) => this.socketAddress + last, {
      receive: (frame) => this.listener.receive(frame),
      lost: () => this.listener.lost(),
      failed: () => this.listener.failed(),
    });
    this.link.open();
  }

  callByRequest(text) {
    const request = makeRequest();
    try {
      openRequest(request, 'POST', this.syncAddress, false);
      sendRequest(request, text);
    } catch (error) {
      throw new Error(unreachable, { cause: error });
    }
    const body = bodyOf(request);
    if (statusOf(request) !== 200) {
      throw new Error(`the runtime refused it with ${statusOf(request)}: ${body}`);
    }
    return parseFrame(body);
  }
}
