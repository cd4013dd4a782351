#!/usr/bin/env node
// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// make_client.mjs FOLDER
// Writes the texts that the server puts together for a page: page_client.js, page_client_end.js and
// worker_client.js.

import { writeFileSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

import { bundleFunction } from '../../../../cmake/bundle.mjs';

const modules = fileURLToPath(new URL('../', import.meta.url));

// One line: the source map at the end of a page's script then needs one entry to cover all of it.
// A template would be printed with its line breaks.
const onOneLine = (entry, parameters) =>
  bundleFunction(path.join(modules, entry), parameters, {
    minifyWhitespace: true,
    supported: { 'template-literal': false },
  });

// The developer tools skip the frames of a script that its source map lists as one to ignore, so
// that console messages show the line of the page that wrote them.
function makePageClientEnd() {
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

const [folder] = process.argv.slice(2);
const texts = {
  'page_client.js': await onOneLine('page.js', ['boot', 'scripts']),
  'page_client_end.js': makePageClientEnd(),
  'worker_client.js': `${await onOneLine('worker.js', [])}();\n`,
};
for (const [name, text] of Object.entries(texts)) {
  writeFileSync(path.join(folder, name), text);
}
