// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The forms in which keys.js is used.

import { generatedNames, mandatoryKeys, registeredKeys } from './keys.js';

const byName = new Map([...mandatoryKeys, ...registeredKeys].map((key) => [key.name, key]));
const scriptRow = ({ name, symbol, code }) => [name, symbol, code];

// The tables of the library's script: [name, symbol, code], and in the last one the hardware code.
export const mandatoryRows = mandatoryKeys.map(scriptRow);
export const registeredRows = registeredKeys.map(scriptRow);
export const generatedRows = generatedNames.map((name) => {
  const { symbol, code, hardwareCode, generatedCode = code } = byName.get(name);
  return [name, symbol, generatedCode, hardwareCode];
});

// The set's keys, each symbol once, the mandatory ones first.
export function setKeys() {
  const keys = new Map();
  for (const { name, symbol, code, hardwareCode = 0 } of byName.values()) {
    const known = keys.get(symbol);
    keys.set(symbol, known ?? { symbol, code, hardwareCode, names: [] });
    keys.get(symbol).names.push(name);
  }
  return [...keys.values()];
}
