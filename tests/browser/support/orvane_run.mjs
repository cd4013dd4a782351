// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// One `orvane run` for a test: its own state folder, free ports, ended and cleaned up by stop().

import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { request } from 'node:http';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { text as readText } from 'node:stream/consumers';
import { setTimeout as pause } from 'node:timers/promises';
import { fileURLToPath } from 'node:url';

export const repository = path.resolve(path.dirname(fileURLToPath(import.meta.url)), '../../..');

export const buildFolder = process.env.ORVANE_BUILD ?? path.join(repository, 'build/dev');

const startLimitMs = 60_000;
const stopLimitMs = 20_000;
const lookEveryMs = 25;

export function orvaneProgram() {
  return process.env.ORVANE ?? path.join(buildFolder, 'bin/orvane');
}

// Waits until `look()` gives something true, and returns that. `what` names it when it does not.
export async function until(look, what, limitMs = 20_000) {
  const end = Date.now() + limitMs;
  for (;;) {
    const found = await look();
    if (found) {
      return found;
    }
    if (Date.now() > end) {
      throw new Error(
        `waited ${limitMs} ms in vain for ${typeof what === 'function' ? what() : what}`
      );
    }
    await pause(lookEveryMs);
  }
}

// Asks this machine by its number: not every system's resolver knows the name that the address has.
async function post({ host, port, pathname }, headers, body) {
  const message = request({
    host: '127.0.0.1',
    port,
    path: pathname,
    method: 'POST',
    headers: { Host: host, ...headers },
    signal: AbortSignal.timeout(stopLimitMs),
    agent: false,
  });
  message.end(body);
  const [response] = await once(message, 'response');
  return { status: response.statusCode, text: await readText(response) };
}

export class OrvaneRun {
  // What the command wrote.
  output = '';
  exit = null; // { code, signal } once it has ended

  // `app` is a folder or package, or null with --url among `args`. `state` is a folder to use and
  // to leave behind; without one, there is a new one.
  constructor(app, { args = [], state, port = 0 } = {}) {
    this.ownState = state === undefined;
    this.state = state ?? mkdtempSync(path.join(tmpdir(), 'orvane-browser-'));
    const all = ['run', ...(app ? [app] : []), '--no-open', '--port', port, '--state', this.state];
    this.process = spawn(orvaneProgram(), [...all, ...args].map(String), {
      stdio: ['ignore', 'pipe', 'pipe'],
    });
    for (const stream of [this.process.stdout, this.process.stderr]) {
      stream.setEncoding('utf8').on('data', (text) => {
        this.output += text;
      });
    }
    this.process.on('error', (error) => {
      this.output += `\n${error.message}`;
      this.exit = { code: -1, signal: null };
    });
    this.process.on('exit', (code, signal) => {
      this.exit = { code, signal };
    });
  }

  // Waits until it serves. Then there are: url (of the simulator, with its secret), appUrl, api,
  // token.
  async ready() {
    const facts = await until(
      () => {
        if (this.exit) {
          throw new Error(`orvane run ended with ${JSON.stringify(this.exit)}:\n${this.output}`);
        }
        return this.readFacts();
      },
      () => `orvane run to serve; it wrote:\n${this.output}`,
      startLimitMs
    );
    Object.assign(this, { facts, ...facts });
    return this;
  }

  readFacts() {
    try {
      const facts = JSON.parse(readFileSync(path.join(this.state, 'run/simulator.json'), 'utf8'));
      return facts.pid === this.process.pid ? facts : null;
    } catch (error) {
      return null;
    }
  }

  // A method of the simulator's interface; throws what it refuses.
  async call(method, params = {}) {
    const { status, text } = await post(
      new URL('/api/call', this.url),
      { 'Content-Type': 'application/json', 'X-Orvane-Token': this.token },
      JSON.stringify({ method, params })
    );
    const answer = text.startsWith('{') ? JSON.parse(text) : { error: { message: text } };
    if (answer.error !== undefined || status !== 200) {
      throw new Error(`${method}: ${answer.error?.message ?? answer.error ?? status}`);
    }
    return answer.result;
  }

  // Ends it as Ctrl-C does.
  async stop() {
    if (!this.exit) {
      this.process.kill('SIGINT');
      await until(() => this.exit, 'orvane run to end', stopLimitMs).catch((error) => {
        this.process.kill('SIGKILL');
        throw error;
      });
    }
    if (this.ownState) {
      rmSync(this.state, { recursive: true, force: true });
    }
    return this.exit;
  }
}

export const startOrvane = (app, options) => new OrvaneRun(app, options).ready();
