// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Runs every *.test.mjs of this folder, or those named, with Node's test runner. Releases of Node
// do not agree on what a folder name means to --test, so each file is given by name.

import { spawnSync } from 'node:child_process';
import { readdirSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const folder = fileURLToPath(new URL('.', import.meta.url));
const named = process.argv.slice(2);
const files =
  named.length > 0 ? named : readdirSync(folder).filter((name) => /\.test\.mjs$/.test(name));
const paths = files.map((name) => path.join(folder, name));
process.exitCode =
  spawnSync(process.execPath, ['--test', ...paths], { stdio: 'inherit' }).status ?? 1;
