// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Joins the files of src/orvane/api/ with a device key file into the script text that the library
// carries: one line without comments in which every name is the one that stands in the files.

import { readFileSync, readdirSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import vm from 'node:vm';
import { tokenizer } from 'acorn';
import { minify } from 'terser';
import { parseDeviceKeys } from './device_keys.mjs';

const apiFolder = fileURLToPath(new URL('../api/', import.meta.url));

export const defaultDeviceKeysFile = fileURLToPath(new URL('../device_keys.json', import.meta.url));

// The order in which the files are evaluated. The device rows come before the table that has them.
const beforeDeviceRows = ['preamble.js', 'key_tables.js'];
const afterDeviceRows = [
  'register_keys.js',
  'enumerations.js',
  'native_calls.js',
  'key_names.js',
  'ime_position.js',
  'device_methods.js',
  'key_methods.js',
  'ime_methods.js',
  'window_methods.js',
  'export.js',
];

// The script as one readable text. Throws DeviceKeysError for a device key file with a fault.
export function joinScript(deviceKeysFile = defaultDeviceKeysFile) {
  checkEveryFileIsJoined();
  const text = readFileSync(deviceKeysFile, 'utf8');
  const rows = parseDeviceKeys(text, deviceKeysFile, readGenericRows());
  return [
    ...beforeDeviceRows.map(readApiFile),
    deviceKeyRowsFunction(rows),
    ...afterDeviceRows.map(readApiFile),
  ].join('');
}

// The script as the library carries it.
export async function buildScriptText(deviceKeysFile) {
  const readable = joinScript(deviceKeysFile);
  const { code } = await minify(readable, {
    compress: false,
    mangle: false,
    format: { ascii_only: true, comments: false, ecma: 5 },
  });
  checkScriptText(readable, code);
  return code;
}

function readApiFile(name) {
  return readFileSync(path.join(apiFolder, name), 'utf8');
}

function checkEveryFileIsJoined() {
  const joined = new Set([...beforeDeviceRows, ...afterDeviceRows]);
  const forgotten = readdirSync(apiFolder).filter((name) => !joined.has(name));
  if (forgotten.length > 0) {
    throw new Error(`${forgotten.join(', ')} in ${apiFolder}: add it to the list of script files`);
  }
}

function deviceKeyRowsFunction(rows) {
  const lines = rows.map((row) => `    ${JSON.stringify(row)},\n`);
  return `function deviceKeyRows() {\n  return [\n${lines.join('')}  ];\n}\n`;
}

// The rows of the three tables as they stand in the files, without device rows.
function readGenericRows() {
  const tables = readApiFile('key_tables.js') + readApiFile('register_keys.js');
  const rows = '[].concat(mandatorykeyRows(), generatekeyRows(), registerkeyRows())';
  return vm.runInNewContext(`${tables}\n${rows};`, { deviceKeyRows: () => [] });
}

function checkScriptText(readable, built) {
  if (/[^\x20-\x7e]/.test(built)) {
    throw new Error('the script text has a line break or a character beyond ASCII');
  }
  const comments = [];
  const before = namesIn(readable);
  const after = namesIn(built, comments);
  if (comments.length > 0) {
    throw new Error(`the script text still has a comment: ${comments[0].value}`);
  }
  const changed = before.findIndex((name, index) => name !== after[index]);
  if (changed >= 0 || before.length !== after.length) {
    throw new Error(`the script text has another name than its files at "${before[changed]}"`);
  }
}

// Every identifier and property name of a text, in order.
function namesIn(text, comments = []) {
  const tokens = tokenizer(text, { ecmaVersion: 2015, onComment: comments });
  return [...tokens].filter((token) => token.type.label === 'name').map((token) => token.value);
}
