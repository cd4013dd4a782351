// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the set's keys are called on the remote control and in the script of a page, and where they
// lie. The keys themselves come from the set; one that is not listed here is a product key.

import { keyGroups, mandatoryKeys, registeredKeys } from '../../../keys/keys.js';

const byName = new Map([...mandatoryKeys, ...registeredKeys].map((key) => [key.name, key]));

/** A group's title, and its keys. */
const groups = keyGroups.map(([title, ...names]) => ({
  title,
  keys: names.map((name) => {
    const { symbol, label = name } = byName.get(name);
    return { symbol, scriptName: name, label };
  }),
}));

const rows = new Map(groups.flatMap(({ keys }) => keys.map((key) => [key.symbol, key])));

/** @returns {{symbol: string, scriptName: string, label: string}} for any symbol */
export function describeKey(symbol) {
  const plain = symbol.replace(/^XF86(Key)?/, '');
  const spaced = plain.replace(/([a-z])([A-Z0-9])/g, '$1 $2');
  return rows.get(symbol) ?? { symbol, scriptName: plain, label: spaced };
}

/** The set's keys by group, with those of the product at the end. */
export function groupKeys(keys) {
  const known = new Map(keys.map((key) => [key.name, key]));
  const listed = groups.map(({ title, keys: entries }) => ({
    title,
    keys: entries.map(({ symbol }) => known.get(symbol)).filter(Boolean),
  }));
  const others = keys.filter((key) => !rows.has(key.name));
  return [...listed, { title: 'Product keys', keys: others }].filter((group) => group.keys.length);
}
