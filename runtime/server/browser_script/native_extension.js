// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The native side of one extension in this page: what the runtime's scripts stand on in a page
// without a browser is C++ there, and messages to the library's process here.

import { callFunction, parse, startTimer, stringify, wellFormed } from './builtins.js';
import { bytesOf } from './bytes.js';
import { commandOf } from './caller.js';
import { runtimeCalls } from './runtime_calls.js';

const unknownError = 9999;

export class NativeExtension {
  // `script` is the extension's script in its wrapper; `problem` says why there is none.
  constructor(name, script, problem, caller) {
    this.name = name;
    this.script = script;
    this.problem = problem;
    this.caller = caller;
    this.listener = null;
    this.waiting = new Set(); // the callback ids whose replies are still to be posted
  }

  // What the runtime's scripts call.
  interface() {
    const runtime = runtimeCalls(this.caller);
    return {
      evaluateScript: () => this.evaluateScript(),
      postMessage: (message) => this.postMessage(message),
      setMessageListener: (listener) => this.setMessageListener(listener),
      sendSyncMessage: (text) => this.sendSyncMessage(text),
      setPendingReplies() {},
      ...runtime,
    };
  }

  evaluateScript() {
    if (typeof this.script !== 'function') {
      throw new SyntaxError(`The script of ${this.name} cannot be used: ${this.problem}`);
    }
    return this.script;
  }

  // An ArrayBuffer, or a view of one, goes as bytes; anything else as text.
  postMessage(message) {
    this.caller.post(
      { type: 'post', extension: this.name },
      bytesOf(message) ?? wellFormed(message),
      () => `${this.name} was not sent a message`
    );
  }

  setMessageListener(listener) {
    if (listener !== undefined && listener !== null && typeof listener !== 'function') {
      throw new TypeError('The message listener must be a function.');
    }
    this.listener = listener ?? null;
  }

  sendSyncMessage(value) {
    const text = wellFormed(value);
    const reply = this.caller.call(
      { type: 'sync', extension: this.name },
      text,
      () => `${this.name} did not answer ${commandOf(text)}`
    );
    this.noteWaiting(text, reply);
    return reply;
  }

  // A posted message has arrived, a text or an ArrayBuffer.
  deliver(message) {
    const mayReply = typeof message === 'string' && this.waiting.size > 0;
    if (mayReply && message.includes('"callbackId"')) {
      this.waiting.delete(callbackIdOf(message));
    }
    if (this.listener !== null) {
      callFunction(this.listener, undefined, [message]);
    }
  }

  // The instance is gone, and with it the replies that it still owed. A new one is made by the
  // next message; the listener stays.
  failWaiting(message) {
    const error = { code: unknownError, name: 'UnknownError', message };
    for (const callbackId of this.waiting) {
      startTimer(() => this.deliver(stringify({ callbackId, status: 'error', error })), 0);
    }
  }

  // A request with a callback id is answered twice: at once, and, unless that answer was an error,
  // by a posted message with that id.
  noteWaiting(text, reply) {
    if (!text.includes('"callbackId"') || reply.includes('"error"')) {
      return;
    }
    const id = callbackIdOf(text);
    if (id !== undefined) {
      this.waiting.add(id);
    }
  }
}

// Of a request it stands in the arguments, of a posted reply beside the status.
function callbackIdOf(text) {
  try {
    const message = parse(text);
    return message?.args?.callbackId ?? message?.callbackId;
  } catch (error) {
    return undefined;
  }
}
