// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The messages of a page context: their numbers, their answers, and errors that name the call.

import { isLongerThan, parse, stringify } from './builtins.js';
import { writeMessage } from './messages.js';

// Posts are not answered. After so many, one message that is answered tells how many arrived.
const postsPerEcho = 64;
// What the server takes. A longer message would cost the page its connection.
const longestMessageBytes = 16 * 1024 * 1024;

function writeBounded(head, body) {
  const message = writeMessage(head, body);
  if (isLongerThan(message, longestMessageBytes)) {
    throw new RangeError(
      `the message is longer than ${longestMessageBytes} bytes; send less at a time`
    );
  }
  return message;
}

// What an answer brings: the text behind its head, or a value in it.
const resultOf = ({ body, result }) => (body === undefined ? result : body);

export class Caller {
  // `transport` is set once, after construction: it and the caller know each other.
  transport = null;
  lastId = 0;
  postsSinceAnswer = 0;
  waiting = new Map(); // id -> { name, receive } of the answers that come later

  // Sends a message, whose body may be undefined, and returns the result of its answer. Throws an
  // Error that begins with `name()`.
  call(head, body, name) {
    const id = this.number();
    let answer;
    try {
      answer = this.transport.call(id, writeBounded({ ...head, id }, body));
    } catch (error) {
      throw new Error(`${name()}: ${error.message}`);
    }
    this.postsSinceAnswer = 0;
    if (answer.error !== undefined) {
      throw new Error(answer.error);
    }
    return resultOf(answer);
  }

  // Throws an Error that begins with `name()`.
  post(head, body, name) {
    const id = this.number();
    try {
      this.transport.send(id, writeBounded({ ...head, id }, body), false);
    } catch (error) {
      throw new Error(`${name()}: ${error.message}`);
    }
    this.postsSinceAnswer += 1;
    if (this.postsSinceAnswer >= postsPerEcho) {
      this.postsSinceAnswer = 0;
      const echo = this.number();
      this.transport.send(echo, stringify({ type: 'echo', id: echo }), true);
    }
  }

  // Sends a message whose answer goes to `receive(result, error)`, later.
  ask(head, body, name, receive) {
    const id = this.number();
    this.waiting.set(id, { name, receive });
    try {
      this.transport.send(id, writeBounded({ ...head, id }, body), true);
    } catch (error) {
      this.waiting.delete(id);
      throw new Error(`${name()}: ${error.message}`);
    }
  }

  // Gives an answer to the one who waits for it.
  answer(message) {
    const { id, error } = message;
    const found = this.waiting.get(id);
    if (found !== undefined) {
      this.waiting.delete(id);
      found.receive(resultOf(message), error);
    }
  }

  // Ends every call that still waits: whoever should have answered is gone.
  failWaiting(why) {
    const all = [...this.waiting.values()];
    this.waiting.clear();
    for (const { name, receive } of all) {
      receive(undefined, `${name()}: ${why}`);
    }
  }

  report(message) {
    this.transport.report(stringify(message));
  }

  number() {
    this.lastId += 1;
    return this.lastId;
  }
}

// What a native message asks for, in words: its command where it has one.
export function commandOf(text) {
  try {
    const { cmd } = parse(text);
    return typeof cmd === 'string' ? cmd : 'a message';
  } catch (error) {
    return 'a message';
  }
}
