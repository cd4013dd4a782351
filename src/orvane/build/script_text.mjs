// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Joins the modules of src/orvane/api/ with a device key file into the script text that the library
// carries: one line without comments in which every name is the one that stands in the modules.

import { readFileSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

import { Parser, tokenizer } from 'acorn';

import { bundle } from '../../../cmake/bundle.mjs';
import { generatedRows, mandatoryRows, registeredRows } from '../../../keys/tables.js';
import { parseDeviceKeys } from './device_keys.mjs';

const apiFolder = fileURLToPath(new URL('../api/', import.meta.url));

export const defaultDeviceKeysFile = fileURLToPath(new URL('../device_keys.json', import.meta.url));

// The script as the library carries it. Throws DeviceKeysError for a device key file with a fault.
export async function buildScriptText(deviceKeysFile = defaultDeviceKeysFile) {
  const deviceRows = parseDeviceKeys(readFileSync(deviceKeysFile, 'utf8'), deviceKeysFile, [
    ...mandatoryRows,
    ...generatedRows,
    ...registeredRows,
  ]);
  const text = await bundle(path.join(apiFolder, 'export.js'), {
    target: 'es2015',
    minifyWhitespace: true,
    logOverride: { 'commonjs-variable-in-esm': 'silent' }, // `exports` is the web runtime's
    plugins: [
      keyRows({
        mandatory: mandatoryRows,
        generated: generatedRows,
        registered: registeredRows,
        device: deviceRows,
      }),
    ],
  });
  checkScriptText(text);
  return text;
}

// Puts the rows of a table in the place of the array that is marked with its name.
function keyRows(tables) {
  const load = ({ path: file }) => ({
    contents: readFileSync(file, 'utf8').replace(/\[\/\* keys: (\w+) \*\/\]/g, (_, name) =>
      JSON.stringify(tables[name])
    ),
  });
  return { name: 'key rows', setup: (build) => build.onLoad({ filter: /\/api\/\w+\.js$/ }, load) };
}

function checkScriptText(text) {
  if (/[^\x20-\x7e]/.test(text)) {
    throw new Error('the script text has a line break or a character beyond ASCII');
  }
  const wanted = namesOfModules();
  const built = namesIn(text);
  const changed = wanted.findIndex((name, index) => name !== built[index]);
  if (changed >= 0 || wanted.length !== built.length) {
    throw new Error(`the script text has another name than its modules at "${wanted[changed]}"`);
  }
}

// Every identifier and property name of the modules, in the order in which they are joined.
export function namesOfModules(module = './export.js', seen = new Set()) {
  if (seen.has(module)) {
    return [];
  }
  seen.add(module);
  const text = readFileSync(path.join(apiFolder, module), 'utf8');
  const { body } = Parser.parse(text, { ecmaVersion: 2015, sourceType: 'module' });
  return body.flatMap(({ type, start, end, source }) =>
    type === 'ImportDeclaration'
      ? namesOfModules(source.value, seen)
      : namesIn(text.slice(start, end))
  );
}

// The names of a script in order. `let` counts as none: what a module declares so is a `var` then.
export function namesIn(text) {
  const tokens = [...tokenizer(text, { ecmaVersion: 2015 })];
  return tokens
    .filter(({ type, value }) => type.label === 'name' && value !== 'let')
    .map(({ value }) => value);
}
