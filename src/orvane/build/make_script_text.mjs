#!/usr/bin/env node
// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// make_script_text.mjs --js FILE [--device-keys FILE]
// Writes the script text.

import { mkdirSync, writeFileSync } from 'node:fs';
import path from 'node:path';
import { parseArgs } from 'node:util';

async function main() {
  const { values } = parseArgs({
    options: { 'device-keys': { type: 'string' }, js: { type: 'string' } },
  });
  if (!values.js) {
    throw new Error('say with --js FILE where the script goes');
  }
  const { buildScriptText } = await importTool('./script_text.mjs');
  const text = await buildScriptText(values['device-keys']);
  mkdirSync(path.dirname(path.resolve(values.js)), { recursive: true });
  writeFileSync(values.js, text);
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

main().catch((error) => {
  const text =
    error.name === 'Error' || error.name === 'DeviceKeysError' ? error.message : error.stack;
  process.stderr.write(`${text}\n`);
  process.exitCode = 1;
});
