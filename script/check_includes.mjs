#!/usr/bin/env node
// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// script/check_includes.mjs [FOLDER]
// Holds every include of the C and C++ files below FOLDER, the repository unless given, against
// the table under "Floors" in its docs/architecture.md: a file may include what is in its own
// folder, in the folders that its row names, and in those that theirs name.

import { existsSync, readFileSync, readdirSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const TABLE = 'docs/architecture.md';

// The folders that includes are relative to, beside that of the including file.
const searchFolders = [
  'runtime',
  'src',
  'platform/base/include',
  'platform/set/include',
  'platform/set',
  'platform/framework',
  'platform/include',
  ...['appfw', 'aul', 'dlog', 'system', 'tv', 'vconf', 'xwalk'].map(
    (name) => `platform/include/${name}`
  ),
  '.',
];

// The table, as a map from each folder to those that its row names.
export function readFloors(text) {
  const section = /^## Floors\n(?<body>[^]*?)(?=^## |$(?![^]))/m.exec(text)?.groups.body ?? '';
  const named = (cell) => [...cell.matchAll(/`([^`]+?)\/?`/g)].map(([, folder]) => folder);
  const floors = new Map();
  const rows = section.matchAll(/^\| *(`[^|]*)\|([^|]*)\|/gm);
  for (const [, first, second] of rows) {
    for (const folder of named(first)) {
      floors.set(folder, named(second));
    }
  }
  for (const folder of [...floors.values()].flat()) {
    if (!floors.has(folder)) {
      throw new Error(`${TABLE}: the table under "Floors" has no row for ${folder}`);
    }
  }
  return floors;
}

// The folder of the table that a file is in, the innermost one; undefined for none.
function floorOf(file, floors) {
  let folder = path.posix.dirname(file);
  while (!floors.has(folder) && folder !== '.') {
    folder = path.posix.dirname(folder);
  }
  return floors.has(folder) ? folder : undefined;
}

// All that a folder may include, itself among them. Throws where it would stand on itself.
function reachable(folder, floors, above = []) {
  if (above.includes(folder)) {
    throw new Error(`${TABLE}: ${[...above, folder].join(' stands on ')}`);
  }
  const below = floors.get(folder).map((other) => reachable(other, floors, [...above, folder]));
  return new Set([folder, ...below.flatMap((set) => [...set])]);
}

function sourceFiles(root, folder) {
  return readdirSync(path.join(root, folder), { withFileTypes: true }).flatMap((entry) => {
    const file = `${folder}/${entry.name}`;
    if (entry.isDirectory()) {
      return sourceFiles(root, file);
    }
    return /\.(h|cc|c)$/.test(entry.name) ? [file] : [];
  });
}

// Where an include leads to in the repository; undefined for a library's or a generated header.
function resolve(root, file, name, quoted) {
  const folders = quoted ? [path.posix.dirname(file), ...searchFolders] : searchFolders;
  return folders
    .map((folder) => path.posix.join(folder, name))
    .find((candidate) => existsSync(path.join(root, candidate)));
}

function includesOf(root, file) {
  const lines = readFileSync(path.join(root, file), 'utf8').split('\n');
  return lines.flatMap((text, index) => {
    const match = /^\s*#\s*include\s*(["<])([^">]+)[">]/.exec(text);
    if (!match) {
      return [];
    }
    const [, quote, name] = match;
    return [{ line: index + 1, name, target: resolve(root, file, name, quote === '"') }];
  });
}

// Every include that the table does not allow, as a line for a person.
export function findViolations(root, floors) {
  const problems = [];
  const tops = new Set([...floors.keys()].map((folder) => folder.split('/')[0]));
  for (const file of [...tops].flatMap((top) => sourceFiles(root, top))) {
    const from = floorOf(file, floors);
    if (from === undefined) {
      problems.push(`${file}: no row of the table under "Floors" in ${TABLE} has its folder`);
      continue;
    }
    const allowed = reachable(from, floors);
    for (const { line, name, target } of includesOf(root, file)) {
      const to = target && floorOf(target, floors);
      if (to !== undefined && !allowed.has(to)) {
        const rule = floors.get(from).join(', ') || 'nothing';
        problems.push(
          `${file}:${line}: includes "${name}" of ${to}; ${from} stands on ${rule} (${TABLE})`
        );
      }
    }
  }
  return problems;
}

function main(root) {
  const floors = readFloors(readFileSync(path.join(root, TABLE), 'utf8'));
  if (floors.size === 0) {
    throw new Error(`${TABLE} has no table under "Floors"`);
  }
  const problems = findViolations(root, floors);
  problems.forEach((problem) => process.stderr.write(`${problem}\n`));
  process.exitCode = problems.length > 0 ? 1 : 0;
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  main(process.argv[2] ?? fileURLToPath(new URL('..', import.meta.url)));
}
