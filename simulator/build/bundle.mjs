// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Makes the simulator's page out of its modules: a handful of files, each with the path below which
// the server serves it.

import { readFile } from 'node:fs/promises';
import { createRequire } from 'node:module';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import * as esbuild from 'esbuild';

const folder = dirname(dirname(fileURLToPath(import.meta.url)));
const resolve = createRequire(import.meta.url).resolve;

// What of other projects is part of the bundle; their licences are served with it.
const carried = [
  'preact',
  'htm',
  '@preact/signals',
  '@preact/signals-core',
  'uplot',
  '@fontsource-variable/inter',
  '@fontsource-variable/jetbrains-mono',
];

/** The extension of a served file's name, and its media type. */
const types = {
  css: 'text/css; charset=utf-8',
  html: 'text/html; charset=utf-8',
  js: 'text/javascript; charset=utf-8',
  svg: 'image/svg+xml',
  txt: 'text/plain; charset=utf-8',
  woff2: 'font/woff2',
};

async function packageFolder(name) {
  for (const folderAbove of resolve.paths(name)) {
    const candidate = join(folderAbove, name);
    const found = await readFile(join(candidate, 'package.json')).catch(() => null);
    if (found) {
      return candidate;
    }
  }
  throw new Error(`${name} is not installed; run npm ci in the repository's folder`);
}

async function licences() {
  const texts = [];
  for (const name of carried) {
    const from = await packageFolder(name);
    const { version } = JSON.parse(await readFile(join(from, 'package.json'), 'utf8'));
    const text = await readFile(join(from, 'LICENSE'), 'utf8');
    texts.push(`${name} ${version}\n\n${text.trim()}\n`);
  }
  return texts.join(`\n${'-'.repeat(72)}\n\n`);
}

/**
 * @param {{sourceMaps?: boolean, minify?: boolean}} [options]
 * @returns {Promise<{path: string, type: string, bytes: Uint8Array}[]>} sorted by path
 */
export async function bundle({ sourceMaps = false, minify = true } = {}) {
  const built = await esbuild.build({
    absWorkingDir: folder,
    entryPoints: { simulator: 'src/main.js' },
    outdir: 'out',
    bundle: true,
    format: 'esm',
    target: ['es2022', 'chrome110', 'firefox115', 'safari16'],
    minify,
    sourcemap: sourceMaps ? 'inline' : false,
    legalComments: 'none', // licenses.txt has them
    loader: { '.woff2': 'file' },
    assetNames: '[name]',
    write: false,
    logLevel: 'warning',
  });
  const files = built.outputFiles.map((file) => ({
    path: `/${file.path.slice(join(folder, 'out').length + 1)}`,
    bytes: file.contents,
  }));
  for (const name of ['index.html', 'icon.svg']) {
    files.push({ path: `/${name}`, bytes: await readFile(join(folder, name)) });
  }
  files.push({ path: '/licenses.txt', bytes: Buffer.from(await licences()) });
  return files
    .map(({ path, bytes }) => ({ path, type: types[path.split('.').pop()], bytes }))
    .sort((a, b) => (a.path < b.path ? -1 : 1));
}
