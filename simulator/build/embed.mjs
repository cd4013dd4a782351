// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// node embed.mjs OUTPUT.cc
// Writes the simulator's page as a C++ source, which defines what simulator_files.h declares.

import { mkdir, writeFile } from 'node:fs/promises';
import { dirname } from 'node:path';
import { bundle } from './bundle.mjs';

const bytesPerLine = 24;

function numbers(bytes) {
  const lines = [];
  for (let at = 0; at < bytes.length; at += bytesPerLine) {
    lines.push(Array.from(bytes.subarray(at, at + bytesPerLine)).join(','));
  }
  return lines.join(',\n');
}

function source(files) {
  const arrays = files.map(
    ({ bytes }, index) => `constexpr unsigned char kBytes${index}[] = {\n${numbers(bytes)}};\n`
  );
  const rows = files.map(
    ({ path, type }, index) =>
      `    {"${path}", "${type}",\n` +
      `     {reinterpret_cast<const char*>(kBytes${index}), sizeof kBytes${index}}},\n`
  );
  return [
    '#include "simulator/simulator_files.h"\n\n',
    'namespace orvane::simulator {\nnamespace {\n\n',
    ...arrays,
    '\n}  // namespace\n\n',
    'const std::vector<File>& Files() {\n  static const std::vector<File> files = {\n',
    ...rows,
    '  };\n  return files;\n}\n\n}  // namespace orvane::simulator\n',
  ].join('');
}

const [output] = process.argv.slice(2);
if (!output) {
  console.error('usage: node embed.mjs OUTPUT.cc');
  process.exit(2);
}
await mkdir(dirname(output), { recursive: true });
await writeFile(output, source(await bundle()));
