// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// node make_files.mjs FOLDER NAME...
// Writes the files of the simulator's page into a folder. The names are those that are expected.

import { writeFile } from 'node:fs/promises';
import path from 'node:path';

import { bundle } from './bundle.mjs';

const [folder, ...expected] = process.argv.slice(2);
const files = await bundle();
const made = files.map((file) => path.basename(file.path));
if (made.join() !== expected.sort().join()) {
  throw new Error(
    `The bundle is ${made}; name these in CMakeLists.txt and simulator_files.cc, not ${expected}.`
  );
}
await Promise.all(files.map((file) => writeFile(path.join(folder, file.path), file.bytes)));
