// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// One classic script out of modules. Names stay as the modules have them, unless two modules have
// the same, and no code is added; comments go.

import { build } from 'esbuild';

/**
 * @param {string} entry the file of a module that exports nothing
 * @param {import('esbuild').BuildOptions} [options]
 * @returns {Promise<string>} the statements of all modules, in the order of their imports; ASCII
 */
export async function bundle(entry, options = {}) {
  const { outputFiles } = await build({
    entryPoints: [entry],
    bundle: true,
    format: 'esm', // without exports: the statements, with nothing around them
    target: 'es2022',
    charset: 'ascii',
    legalComments: 'none',
    write: false,
    logLevel: 'warning',
    ...options,
  });
  return outputFiles[0].text.trim();
}

/** The same as one function expression with these parameters, strict. */
export async function bundleFunction(entry, parameters, options) {
  const statements = await bundle(entry, options);
  return `(function(${parameters.join(',')}){"use strict";${statements}})`;
}
