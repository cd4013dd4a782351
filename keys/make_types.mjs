#!/usr/bin/env node
// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// keys/make_types.mjs
// Writes types/key_names.d.ts anew. It is in the repository because the types are used from there.

import { readFileSync, writeFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import { generatedNames, mandatoryKeys, registeredKeys } from './keys.js';

const fileOf = (relative) => fileURLToPath(new URL(relative, import.meta.url));

export const declarationsFile = fileOf('../types/key_names.d.ts');

/* eslint-disable max-len -- the declarations are indented less in their file */
// The declarations of every key's name.
export function declarations() {
  const deviceKeys = JSON.parse(readFileSync(fileOf('../src/orvane/device_keys.json'), 'utf8'));
  const quoted = (names) => names.map((name) => `'${name}'`);
  const lines = (names) =>
    quoted(names)
      .map((name) => `\n    | ${name}`)
      .join('');
  const named = (keys) => keys.map(({ name }) => name);
  const members = named(deviceKeys)
    .map((name) => `    ${name}: true;\n`)
    .join('');
  return `// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

/**
 * The key names of {@link dravelt.orvane}; orvane.d.ts has the object itself.
 */
declare namespace dravelt.orvane {
  /** Keys that every application receives without registering them. */
  type MandatoryKeyName = ${quoted(named(mandatoryKeys)).join(' | ')};

  /** Keys that every set knows, apart from the mandatory ones. */
  type GenericKeyName =${lines(named(registeredKeys))};

  /**
   * The keys of the set's own remote control, named by the members. These are the ones of the device
   * key file that the library is built with by default; a project for another set adds its names:
   *
   *     declare namespace dravelt.orvane {
   *       interface DeviceKeyNames {
   *         MyServiceKey: true;
   *       }
   *     }
   */
  interface DeviceKeyNames {
${members}  }

  /** Keys that a page may register and unregister. */
  type RegisterableKeyName = MandatoryKeyName | SupportedKeyName;

  /** Keys that getSpecialSupportedKeys lists. */
  type SupportedKeyName = GenericKeyName | keyof DeviceKeyNames;

  /** A digit key may be given as a number in a list of keys. */
  type DigitKey = 0 | 1 | 2 | 3 | 4 | 5 | 6 | 7 | 8 | 9;

  /** Keys that a page may generate. */
  type GeneratableKeyName =${lines(generatedNames)};
}
`;
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  writeFileSync(declarationsFile, declarations());
}
