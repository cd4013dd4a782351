// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

import { parse, stringify } from './builtins.js';

// A script's way to its own extension and to the web runtime. Native messages are JSON: a request
// has `cmd` and `args`, a reply has `status` and, as the case may be, `result` or `error`;
// `callbackId` ties a posted reply to its call.
export function makeNativeManager(use) {
  const unknownError = 9999;
  const longestQuote = 80;

  // Unique in the page: extensions have a manager each, and all count on from here.
  let lastCallbackId = 0;

  const plain = {};

  // The request as JSON. A page that gives every object a toJSON does not change what it says.
  function write(command, args) {
    return stringify(
      'toJSON' in plain
        ? { __proto__: null, cmd: command, args: { __proto__: null, ...args } }
        : { cmd: command, args: args || {} }
    );
  }

  function failure(message) {
    return { status: 'error', error: { code: unknownError, name: 'UnknownError', message } };
  }

  function quote(text) {
    return stringify(text.length > longestQuote ? `${text.slice(0, longestQuote)}\u2026` : text);
  }

  function readReply(text, command) {
    let reply;
    try {
      reply = parse(text);
    } catch (error) {
      return failure(
        text === '' || text === undefined
          ? `The reply to "${command}" is empty.`
          : `The reply to "${command}" is not JSON: ${quote(String(text))}.`
      );
    }
    if (reply === null || typeof reply !== 'object') {
      return failure(`The reply to "${command}" is not a JSON object: ${quote(text)}.`);
    }
    return reply;
  }

  // The web runtime answers with a plain word or with a reply of the native form.
  function readAnswer(text, uri) {
    if (text === 'success') {
      return { status: 'success' };
    }
    if (typeof text === 'string' && text.startsWith('{')) {
      return readReply(text, uri);
    }
    return failure(`The runtime answered ${quote(String(text))} to "${uri}".`);
  }

  class NativeManager {
    // Declared: assigning a member that is not there would call a setter of that name that a page
    // has put on Object.prototype, and hand it the extension.
    extension_;
    send_;
    callbacks_ = { __proto__: null };
    waiting_ = 0;
    listeners_ = { __proto__: null };

    // `extension` is the object that the runtime gives to an extension's script.
    constructor(extension) {
      this.extension_ = extension;
      this.send_ = extension.internal.sendSyncMessage;
      extension.setMessageListener((message) => receive(this, message));
    }

    // Sends a message and waits for the reply. Never throws for what the other side does: a reply
    // that cannot be read is a failed one.
    callSync(command, args) {
      const message = write(command, args);
      let text;
      try {
        text = this.send_(message);
      } catch (error) {
        return failure(error.message);
      }
      return readReply(text, command);
    }

    // Sends a message whose reply is posted later; `callback` receives that reply. A call that
    // fails at once gives the failed reply to `callback` before this returns, so that no page waits
    // for ever.
    call(command, args, callback) {
      lastCallbackId += 1;
      const callbackId = lastCallbackId;
      this.callbacks_[callbackId] = callback;
      countWaiting(this, 1);
      const reply = this.callSync(command, { ...args, callbackId });
      if (this.isFailure(reply)) {
        finish(this, callbackId, reply);
      }
      return reply;
    }

    // A listener stays: it receives every posted message whose `listenerId` is `id`.
    addListener(id, listener) {
      this.listeners_[id] = listener;
    }

    removeListener(id) {
      delete this.listeners_[id];
    }

    isFailure(reply) {
      return reply !== null && typeof reply === 'object' && reply.status === 'error';
    }

    isSuccess(reply) {
      return !this.isFailure(reply);
    }

    getErrorObject(reply) {
      const WebAPIException = use('exceptions');
      return new WebAPIException(reply.error || {});
    }

    getResultObject(reply) {
      return reply.result;
    }

    callIfPossible(callback, ...args) {
      if (typeof callback === 'function') {
        callback(...args);
      }
    }

    sendRuntimeMessage(uri, text) {
      return this.extension_.sendRuntimeMessage(uri, text);
    }

    sendRuntimeSyncMessage(uri, text) {
      return this.extension_.sendRuntimeSyncMessage(uri, text);
    }

    // `callback` receives the answer in the form of a reply, for isFailure and its like.
    sendRuntimeAsyncMessage(uri, text, callback) {
      return this.extension_.sendRuntimeAsyncMessage(uri, text, (answer) =>
        this.callIfPossible(callback, readAnswer(answer, uri))
      );
    }
  }

  // Ends the call that waits with this id, if there is one.
  function finish(manager, callbackId, reply) {
    if (!(callbackId in manager.callbacks_)) {
      return false;
    }
    const callback = manager.callbacks_[callbackId];
    delete manager.callbacks_[callbackId];
    countWaiting(manager, -1);
    manager.callIfPossible(callback, reply);
    return true;
  }

  function receive(manager, text) {
    if (typeof text !== 'string') {
      return;
    }
    let message = null;
    try {
      message = parse(text);
    } catch (error) {
      // Told below.
    }
    if (message === null || typeof message !== 'object') {
      console.warn(`An extension posted what is no JSON object: ${quote(text)}.`);
    } else if (message.listenerId in manager.listeners_) {
      manager.callIfPossible(manager.listeners_[message.listenerId], message);
    } else if (!finish(manager, message.callbackId, message)) {
      console.warn(`No call waits for the posted message ${quote(text)}.`);
    }
  }

  // Lets a page that runs until nothing is pending know how many replies are still to come.
  function countWaiting(manager, change) {
    manager.waiting_ += change;
    const { setPendingReplies } = manager.extension_.internal;
    if (setPendingReplies) {
      setPendingReplies(manager.waiting_);
    }
  }

  return NativeManager;
}
