// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The worker of a page that is cross-origin isolated. It owns the context's socket, so that answers
// arrive while the page's script waits for them.
//
// From the page: first { memory, address } with the socket's URL up to the message's number, then
// [id, data, answered] for a request and a plain text for a report. To the page: each message that
// is not the answer that the page waits for, and { event: 'lost' } or { event: 'failed' }.

import { AnswerBuffer } from './answer_buffer.js';
import { addListener } from './builtins.js';
import { Connection } from './connection.js';

const page = globalThis;
let buffer = null;
let connection = null;

function receive(message, data) {
  if (message.type === 'answer' && buffer.isWanted(message.id)) {
    buffer.write(message.id, data);
  } else {
    page.postMessage(data);
  }
}

function start({ memory, address }) {
  buffer = new AnswerBuffer(memory);
  connection = new Connection((last) => address + last, {
    receive,
    linked: () => buffer.setLinked(),
    lost: () => page.postMessage({ event: 'lost' }),
    failed: () => page.postMessage({ event: 'failed' }),
  });
  connection.open();
}

addListener(page, 'message', ({ data }) => {
  if (typeof data === 'string') {
    connection.report(data);
  } else if (Array.isArray(data)) {
    connection.request(...data);
  } else {
    start(data);
  }
});
