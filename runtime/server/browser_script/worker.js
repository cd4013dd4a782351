// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The worker of a page that is cross-origin isolated. It owns the context's socket, so that answers
// arrive while the page's script waits for them.
//
// From the page: first { memory, address } with the socket's URL up to the frame number, then
// [id, text, answered] for a request and a plain text for a report. To the page: each frame's text
// that is not the answer that the page waits for, and { event: 'lost' } or { event: 'failed' }.

import { AnswerBuffer } from './answer_buffer.js';
import { addListener } from './builtins.js';
import { Link } from './link.js';

const page = globalThis;
let buffer = null;
let link = null;

function receive(frame, text) {
  if (frame.type === 'answer' && buffer.isWanted(frame.id)) {
    buffer.write(frame.id, text);
  } else {
    page.postMessage(text);
  }
}

function start({ memory, address }) {
  buffer = new AnswerBuffer(memory);
  link = new Link((last) => address + last, {
    receive,
    linked: () => buffer.setLinked(),
    lost: () => page.postMessage({ event: 'lost' }),
    failed: () => page.postMessage({ event: 'failed' }),
  });
  link.open();
}

addListener(page, 'message', ({ data }) => {
  if (typeof data === 'string') {
    link.report(data);
  } else if (Array.isArray(data)) {
    link.request(...data);
  } else {
    start(data);
  }
});
