// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The form of the messages between a page and the server: a line of JSON, the head, and behind the
// line's end, where there is one, the body: a text, or bytes, which is then a message of bytes.

import {
  decodeText,
  encodeText,
  indexOfByte,
  parse,
  setPrototypeOf,
  stringify,
} from './builtins.js';

const lineEnd = 10;

// The head's members without a prototype, since what a page has put on Object.prototype is none of
// them, and `body`, a text or an ArrayBuffer, where there is one. `data` is such a thing too.
export function parseMessage(data) {
  if (typeof data !== 'string') {
    const bytes = new Uint8Array(data);
    const end = indexOfByte(bytes, lineEnd);
    const message = setPrototypeOf(parse(decodeText(bytes.subarray(0, end))), null);
    message.body = bytes.slice(end + 1).buffer;
    return message;
  }
  const end = data.indexOf('\n');
  const message = setPrototypeOf(parse(end < 0 ? data : data.slice(0, end)), null);
  if (end >= 0) {
    message.body = data.slice(end + 1);
  }
  return message;
}

// A text, or a Uint8Array where the body is one.
export function writeMessage(head, body) {
  const line = stringify(head);
  if (body === undefined || typeof body === 'string') {
    return body === undefined ? line : `${line}\n${body}`;
  }
  const start = encodeText(`${line}\n`);
  const message = new Uint8Array(start.length + body.length);
  message.set(start);
  message.set(body, start.length);
  return message;
}
