#!/usr/bin/env node
// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// make_script_text.mjs --device-keys FILE --cc FILE [--js FILE]
// Writes the C++ source that carries the script text, and with --js the text on its own.

import { mkdirSync, writeFileSync } from 'node:fs';
import path from 'node:path';
import { parseArgs } from 'node:util';

async function main() {
  const { values } = parseArgs({
    options: {
      'device-keys': { type: 'string' },
      cc: { type: 'string' },
      js: { type: 'string' },
    },
  });
  if (!values.cc) {
    throw new Error('say with --cc FILE where the C++ source goes');
  }
  const { buildScriptText } = await importTool('./script_text.mjs');
  const { toCppSource } = await import('./cpp_source.mjs');
  const text = await buildScriptText(values['device-keys']);
  write(values.cc, toCppSource(text));
  if (values.js) {
    write(values.js, text);
  }
}

async function importTool(module) {
  try {
    return await import(module);
  } catch (error) {
    if (error.code !== 'ERR_MODULE_NOT_FOUND') {
      throw error;
    }
    throw new Error(`${error.message}\nrun "npm ci" in the repository's root folder first`);
  }
}

function write(file, text) {
  mkdirSync(path.dirname(path.resolve(file)), { recursive: true });
  writeFileSync(file, text);
}

main().catch((error) => {
  const text =
    error.name === 'Error' || error.name === 'DeviceKeysError' ? error.message : error.stack;
  process.stderr.write(`${text}\n`);
  process.exitCode = 1;
});
