// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// node simulator/dev/mock_server.mjs [PORT]
// The simulator's page over a set that only pretends, for work on the page itself. Bundles at every
// load. Never shipped.

import { createServer } from 'node:http';
import { fileURLToPath } from 'node:url';
import { WebSocketServer } from 'ws';
import { bundle } from '../build/bundle.mjs';
import { appPage } from './mock_app.mjs';
import { newMethods } from './mock_methods.mjs';

function listen(server, port) {
  return new Promise((done) => {
    server.listen(port, '127.0.0.1', () => done(server.address().port));
  });
}

function headers(type, appOrigin) {
  return {
    'Content-Type': type,
    'Cache-Control': 'no-store',
    'Content-Security-Policy':
      "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; " +
      "font-src 'self'; connect-src 'self'; " +
      `frame-src ${appOrigin}; base-uri 'none'; frame-ancestors 'none'`,
    'Cross-Origin-Opener-Policy': 'same-origin',
    'Cross-Origin-Embedder-Policy': 'require-corp',
  };
}

/** `methods` may be called here, too; `calls` is what the pages called. */
export async function startMock({
  port = 0,
  token = 'development',
  minify = false,
  rebundle = false,
} = {}) {
  let files = await bundle({ minify });
  const appServer = createServer((request, response) => {
    response.writeHead(200, {
      'Content-Type': 'text/html; charset=utf-8',
      'Cross-Origin-Opener-Policy': 'same-origin',
      'Cross-Origin-Embedder-Policy': 'credentialless',
      'Cross-Origin-Resource-Policy': 'cross-origin',
    });
    response.end(appPage);
  });
  const appUrl = `http://127.0.0.1:${await listen(appServer, 0)}/`;

  const server = createServer(async (request, response) => {
    const path = request.url.split('?')[0];
    if (rebundle && path === '/') {
      files = await bundle({ minify }).catch(() => files);
    }
    const file = files.find((each) => each.path === (path === '/' ? '/index.html' : path));
    response.writeHead(file ? 200 : 404, headers(file?.type ?? 'text/plain', appUrl.slice(0, -1)));
    response.end(file?.bytes ?? 'not found');
  });

  const sockets = new WebSocketServer({ noServer: true });
  const emit = (events) =>
    sockets.clients.forEach((client) => client.send(JSON.stringify({ events })));
  const methods = newMethods(emit, appUrl);
  const calls = [];
  server.on('upgrade', (request, socket, head) => {
    if (new URL(request.url, 'http://mock').searchParams.get('token') !== token) {
      socket.end('HTTP/1.1 403 Forbidden\r\n\r\n');
      return;
    }
    sockets.handleUpgrade(request, socket, head, (client) => {
      client.on('message', (data) => {
        const message = JSON.parse(data);
        calls.push({ method: message.method, params: message.params });
        answer(client, methods, message);
      });
    });
  });
  const bound = await listen(server, port);
  const close = async () => {
    sockets.clients.forEach((client) => client.terminate());
    for (const each of [server, appServer]) {
      each.closeAllConnections();
      await new Promise((done) => {
        each.close(done);
      });
    }
  };
  const dropSockets = () => sockets.clients.forEach((client) => client.terminate());
  const url = `http://localhost:${bound}/#token=${token}`;
  return { url, methods, calls, emit, dropSockets, close };
}

function answer(client, methods, { id, method, params }) {
  const reply = { id };
  try {
    if (!methods[method]) {
      throw new Error(`there is no method "${method}"`);
    }
    reply.result = methods[method](params ?? {}) ?? null;
  } catch (error) {
    reply.error = { message: error.message };
  }
  client.send(JSON.stringify(reply));
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  const mock = await startMock({ port: Number(process.argv[2] ?? 0), rebundle: true });
  mock.methods['log.write']({ count: 40, text: 'orvane_instance: getVersion(88) > Enter' });
  console.log(mock.url);
}
