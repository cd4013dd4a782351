#!/usr/bin/env node
// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// make_client.mjs --page-script FILE --wrapper-head FILE --wrapper-tail FILE --output FOLDER
// Makes the texts that the server puts together for a page: page_client.js, page_client_end.js,
// worker_client.js, wrapper_head.js and wrapper_tail.js. `page-script` is the joined script of
// runtime/page, one function expression.

import { mkdirSync, readFileSync, writeFileSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { parseArgs } from 'node:util';

import { build, transform } from 'esbuild';

const sources = path.resolve(path.dirname(fileURLToPath(import.meta.url)), '..');

// One line: the source map at the end of a page's script then needs one entry to cover all of it.
async function bundle(entry, options) {
  const { outputFiles } = await build({
    entryPoints: [path.join(sources, entry)],
    bundle: true,
    format: 'iife',
    target: 'es2022',
    legalComments: 'none',
    minifyWhitespace: true,
    minifySyntax: false,
    charset: 'ascii',
    write: false,
    logLevel: 'warning',
    ...options,
  });
  return outputFiles[0].text.trim().replace(/;$/, '');
}

async function onOneLine(text) {
  const { code } = await transform(text, {
    minifyWhitespace: true,
    charset: 'ascii',
    legalComments: 'none',
  });
  return code.trim().replace(/;$/, '');
}

// The function expression of a page's script; the server calls it with the page's facts and
// scripts.
export async function makePageClient(pageScript) {
  const client = await bundle('page.js', { globalName: 'client' });
  const startPage = await onOneLine(`(${pageScript.replace(/;\s*$/, '')})`);
  const body = `"use strict";${client};client.start(boot,scripts,${startPage});`;
  return `(function(boot,scripts){${body}})`;
}

// The developer tools skip the frames of a script that its source map lists as one to ignore, so
// that console messages show the line of the page that wrote them.
export function makePageClientEnd() {
  const map = {
    version: 3,
    sources: ['orvane:page.js'],
    sourcesContent: ['// The runtime that "orvane run" gives to a page.\n'],
    names: [],
    mappings: 'AAAA',
    ignoreList: [0],
    x_google_ignoreList: [0],
  };
  const data = Buffer.from(JSON.stringify(map)).toString('base64');
  return `;\n//# sourceMappingURL=data:application/json;base64,${data}\n`;
}

export const makeWorkerClient = async () => `${await bundle('worker.js', {})};\n`;

async function main() {
  const { values } = parseArgs({
    options: {
      'page-script': { type: 'string' },
      'wrapper-head': { type: 'string' },
      'wrapper-tail': { type: 'string' },
      output: { type: 'string' },
    },
  });
  const read = (option) => readFileSync(values[option], 'utf8');
  const texts = {
    'page_client.js': await makePageClient(read('page-script')),
    'page_client_end.js': makePageClientEnd(),
    'worker_client.js': await makeWorkerClient(),
    'wrapper_head.js': `\n${read('wrapper-head')}`,
    'wrapper_tail.js': read('wrapper-tail'),
  };
  mkdirSync(values.output, { recursive: true });
  for (const [name, text] of Object.entries(texts)) {
    writeFileSync(path.join(values.output, name), text);
  }
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  await main();
}
