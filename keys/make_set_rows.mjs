// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// node make_set_rows.mjs FILE
// Writes the set's keys as a C++ array of rows: symbol, code, hardware code, names.

import { writeFileSync } from 'node:fs';
import { mandatoryKeys } from './keys.js';
import { setKeys } from './tables.js';

const rows = setKeys().map(
  ({ symbol, code, hardwareCode, names }) =>
    `    {"${symbol}", ${code}, ${hardwareCode}, "${names.join(' ')}"},\n`
);
writeFileSync(
  process.argv[2],
  `constexpr int kMandatoryKeys = ${mandatoryKeys.length};  // the first rows\n\n` +
    `constexpr Row kRows[] = {\n${rows.join('')}};\n`
);
