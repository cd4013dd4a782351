// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A server that gives pages the browser page's runtime and answers its messages as a test says: for
// what the real server does too rarely or too quickly to be looked at, such as a socket that breaks
// between two messages.

import { readFileSync } from 'node:fs';
import { createServer } from 'node:http';
import path from 'node:path';

import { WebSocketServer } from 'ws';

import { buildFolder, until } from './orvane_run.mjs';

const readBuilt = (name) => readFileSync(path.join(buildFolder, 'runtime', name), 'utf8');
const readText = (name) => readBuilt(path.join('server/browser_script', name));

// An extension whose script gives the page its bare functions.
const echoScript = `
exports.send = (text) => extension.internal.sendSyncMessage(text);
exports.post = (text) => extension.postMessage(text);
exports.listen = (listener) => extension.setMessageListener(listener);
exports.native = new xwalk.utils.NativeManager(extension);
exports.runtime = extension;
`;

const inserted = '<script src="/.orvane/page.js"></script>';

const isolation = {
  'Cross-Origin-Opener-Policy': 'same-origin',
  'Cross-Origin-Embedder-Policy': 'credentialless',
};

// What a page sent: its head, and its body as `text` or, of a message of bytes, as `bytes`.
function parseMessage(data, isBinary = false) {
  const end = data.indexOf('\n');
  const head = JSON.parse(data.subarray(0, end < 0 ? data.length : end).toString());
  const body = end < 0 ? undefined : data.subarray(end + 1);
  if (body === undefined) {
    return head;
  }
  return isBinary ? { ...head, bytes: [...body] } : { ...head, text: body.toString() };
}

// The `body` of a message stands behind its head: a text, or bytes in a Buffer.
function writeMessage({ body, ...head }) {
  const line = JSON.stringify(head);
  if (Buffer.isBuffer(body)) {
    return Buffer.concat([Buffer.from(`${line}\n`), body]);
  }
  return body === undefined ? line : `${line}\n${body}`;
}

// One page context, as the server keeps it.
class Context {
  constructor(number) {
    this.number = number;
    this.received = []; // the numbers of the messages that have an effect
    this.kept = []; // what was sent and is not acknowledged
    this.seq = 0;
    this.socket = null;
    this.last = 0;
  }

  send(message) {
    this.seq += 1;
    const data = writeMessage({ ...message, seq: this.seq });
    this.kept.push({ seq: this.seq, data });
    this.socket?.send(data);
  }

  connect(socket, last) {
    this.socket = socket;
    socket.send(JSON.stringify({ type: 'hello', received: Math.max(0, ...this.received) }));
    this.kept
      .filter(({ seq }) => seq > last)
      .forEach(({ data }) => {
        socket.send(data);
      });
  }
}

export class FakeRuntime {
  contexts = [];
  messages = []; // every message that arrived, with `context` and `way` ("socket" or "request")
  byes = []; // contexts that told that their page goes
  isolated = true;
  acceptSockets = true;
  deadlineMs = 3000;
  html = '<!DOCTYPE html><title>fake</title><body></body>';
  headers = {}; // of the page

  // The result of a message; `undefined` leaves it without an answer. To be replaced.
  answer(message) {
    switch (message.type) {
      case 'sync':
        return message.text;
      case 'privilege':
        return true;
      case 'runtime':
        return message.kind === 'plain' ? true : 'success';
      case 'widget':
        return 'success';
      default:
        return null;
    }
  }

  async start() {
    this.server = createServer((request, response) => this.serve(request, response));
    this.sockets = new WebSocketServer({ noServer: true });
    this.server.on('upgrade', (request, socket, head) => {
      if (!this.acceptSockets) {
        socket.destroy();
        return;
      }
      this.sockets.handleUpgrade(request, socket, head, (webSocket) =>
        this.connect(webSocket, new URL(request.url, 'http://host'))
      );
    });
    await new Promise((resolve) => {
      this.server.listen(0, '127.0.0.1', resolve);
    });
    this.url = `http://127.0.0.1:${this.server.address().port}/`;
    return this;
  }

  async stop() {
    this.dropSockets();
    this.server.closeAllConnections();
    await new Promise((resolve) => {
      this.server.close(resolve);
    });
  }

  dropSockets() {
    this.sockets.clients.forEach((socket) => socket.terminate());
  }

  // The messages of a type that have arrived.
  of(type) {
    return this.messages.filter((message) => message.type === type);
  }

  get context() {
    return this.contexts.at(-1);
  }

  async serve(request, response) {
    const { pathname, searchParams } = new URL(request.url, 'http://host');
    const script = { 'Content-Type': 'text/javascript', ...(this.isolated ? isolation : {}) };
    if (pathname === '/.orvane/page.js') {
      response.writeHead(200, script).end(this.pageScript());
    } else if (pathname === '/.orvane/worker.js') {
      response.writeHead(200, script).end(readText('worker_client.js'));
    } else if (pathname === '/.orvane/sync') {
      const chunks = await request.toArray();
      const context = this.contexts[searchParams.get('context') - 1];
      const isBinary = request.headers['content-type'] === 'application/octet-stream';
      const message = parseMessage(Buffer.concat(chunks), isBinary);
      response.end(writeMessage({ type: 'answer', ...this.receive(context, message, 'request') }));
    } else if (pathname === '/.orvane/bye') {
      this.byes.push(Number(searchParams.get('context')));
      response.end();
    } else {
      const type = { 'Content-Type': 'text/html; charset=utf-8' };
      const headers = { ...type, ...(this.isolated ? isolation : {}), ...this.headers };
      const html = typeof this.html === 'function' ? this.html(pathname) : this.html;
      response
        .writeHead(200, headers)
        .end(pathname === '/plain' ? html : html.replace(/(<!DOCTYPE html>)?/i, `$1${inserted}`));
    }
  }

  pageScript() {
    this.contexts.push(new Context(this.contexts.length + 1));
    const boot = {
      context: this.contexts.length,
      token: 'secret',
      catalogue: [{ name: 'dravelt.echo', entryPoints: [] }],
      app: { id: 'Fake.App', name: 'Fake', version: '1.0.0' },
      deadlineMs: this.deadlineMs,
    };
    const head = readBuilt('page/wrapper_head.js');
    const tail = readBuilt('page/wrapper_tail.js');
    const scripts = `{"dravelt.echo":\n${head}${echoScript}${tail}}`;
    const call = `(${JSON.stringify(boot)},${scripts})`;
    return `${readText('page_client.js')}${call}${readText('page_client_end.js')}`;
  }

  connect(socket, address) {
    const context = this.contexts[address.searchParams.get('context') - 1];
    context.connect(socket, Number(address.searchParams.get('last')));
    socket.on('message', (data, isBinary) => {
      const message = parseMessage(data, isBinary);
      if (message.id !== undefined && context.received.includes(message.id)) {
        return;
      }
      const answer = this.receive(context, message, 'socket');
      if (answer && message.id !== undefined && message.type !== 'post') {
        context.send({ type: 'answer', ...answer });
      }
    });
  }

  receive(context, message, way) {
    if (message.id !== undefined) {
      context.received.push(message.id);
    }
    this.messages.push({ ...message, context: context.number, way });
    try {
      const result = this.answer(message, context);
      if (result === undefined) {
        return null;
      }
      return { id: message.id, ...(message.type === 'sync' ? { body: result } : { result }) };
    } catch (error) {
      return { id: message.id, error: error.message };
    }
  }
}

// A fake runtime with `facts` for a test of `scene`, and a page of it.
export async function openFake(scene, facts = {}) {
  const runtime = Object.assign(new FakeRuntime(), facts);
  await runtime.start();
  scene.onEnd(() => runtime.stop());
  const page = await scene.open(runtime.url);
  return { runtime, page };
}

// Until the page's calls take the worker's way.
export async function linked(runtime, page) {
  await until(async () => {
    await page.evaluate(() => dravelt.echo.send('probe'));
    return runtime.of('sync').at(-1).way === 'socket';
  }, 'the worker to take over');
}
