// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The rows of the on-screen keyboard. A key is its text, or [what it does, label, columns].

const letters = ['1234567890', 'qwertyuiop', 'asdfghjkl', 'zxcvbnm'];
const symbols = ['1234567890', '!@#$%&*()-', '+=_/:;"\'?', ',.<>[]{}'];

function text(row) {
  return Array.from(row, (character) => ['text', character, 2]);
}

/** @param {'lower' | 'upper' | 'symbols'} page */
export function keyboardRows(page) {
  const rows = (page === 'symbols' ? symbols : letters).map((row) =>
    text(page === 'upper' ? row.toUpperCase() : row)
  );
  const shift = ['shift', page === 'upper' ? 'abc' : 'ABC', 3];
  rows[2] = [...rows[2].map(([action, label]) => [action, label, 2]), ['enter', 'Done', 2]];
  rows[3] = [shift, ...rows[3].slice(0, 7), ['backspace', 'Delete', 3]];
  rows.push([
    ['symbols', page === 'symbols' ? 'abc' : '#+=', 3],
    ['clear', 'Clear', 3],
    ['space', 'Space', 11],
    ['hide', 'Hide', 3],
  ]);
  return rows;
}
