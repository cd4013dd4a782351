#!/usr/bin/env node
// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// make_page_scripts.mjs FOLDER
// Writes what the runtime evaluates in a page without a browser, and what every extension's script
// is evaluated in: page.js, a function of the page's host; wrapper_head.js and wrapper_tail.js.

import { readFileSync, writeFileSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

import { transform } from 'esbuild';

import { bundleFunction } from '../../../cmake/bundle.mjs';

const modules = fileURLToPath(new URL('../js/', import.meta.url));
const mark = 'scriptText;';

async function wrapperParts() {
  const text = readFileSync(path.join(modules, 'extension_wrapper.js'), 'utf8');
  const { code } = await transform(text, { minifyWhitespace: true, legalComments: 'none' });
  const parts = code.replace(/;\s*$/, '').split(mark);
  if (parts.length !== 2 || parts[0].includes('\n')) {
    throw new Error(`extension_wrapper.js is to have "${mark}" once: ${code}`);
  }
  return parts;
}

const [folder] = process.argv.slice(2);
const [head, tail] = await wrapperParts();
const texts = {
  'page.js': await bundleFunction(path.join(modules, 'in_process.js'), ['host']),
  'wrapper_head.js': head,
  'wrapper_tail.js': `\n${tail}`, // the text may end with a comment
};
for (const [name, text] of Object.entries(texts)) {
  writeFileSync(path.join(folder, name), text);
}
