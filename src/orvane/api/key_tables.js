// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The keys of a remote control, by the name that a page uses. Each row is
//   [script name, platform symbol, key code] or
//   [script name, platform symbol, key code, hardware code].
// The build fills them in from keys/. They stand in arrays because their order is part of the
// interface, and an object would move the digit keys to the front. They are read when a page first
// needs a key: making the tables takes longer than the rest of the script, and many pages never
// ask.

import { registerkeyRows } from './register_keys.js';

export let mandatorykeyMap = null;
export let generatekeyMap = null;
export let registerkeyMap = null;

// Makes the three tables, once. To be called before one is read.
export function loadKeyTables() {
  if (registerkeyMap === null) {
    mandatorykeyMap = keyTable(mandatorykeyRows());
    generatekeyMap = keyTable(generatekeyRows());
    registerkeyMap = keyTable(registerkeyRows());
  }
}

// The table of some rows, by script name. It has no prototype: only its own names are ever found.
function keyTable(rows) {
  const table = Object.create(null);
  for (let i = 0; i < rows.length; ++i) {
    const entry = { keyName: rows[i][1], keyCode: rows[i][2] };
    if (rows[i].length > 3) {
      entry.xkeyCode = rows[i][3];
    }
    table[rows[i][0]] = entry;
  }
  return table;
}

// Keys that every application receives without asking. They may be registered, but are not listed.
function mandatorykeyRows() {
  return [/* keys: mandatory */];
}

// Keys that a page may generate; only the hardware code leaves the script. The key codes of
// MediaRewind and MediaFastForward differ from those of registerkeyRows: both tables are right.
function generatekeyRows() {
  return [/* keys: generated */];
}
