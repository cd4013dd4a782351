// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// $PRODUCTS are the binaries, $FOLDERS those that they were made of and in, with colons between.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import path from 'node:path';
import { test } from 'node:test';

const [products, folders] = [process.env.PRODUCTS, process.env.FOLDERS].map((list) =>
  list.split(':')
);

// The texts of a binary, to their end, that name the folder.
function textsWith(folder, binary) {
  const texts = [];
  for (let at = binary.indexOf(folder); at >= 0; at = binary.indexOf(folder, at + 1)) {
    texts.push(binary.toString('latin1', at, binary.indexOf(0, at)));
  }
  return texts;
}

for (const product of products) {
  test(`${path.basename(product)} holds no path of the machine that built it`, () => {
    const binary = readFileSync(product);

    assert.deepEqual(binary.subarray(0, 4), Buffer.from('\x7fELF'));
    for (const folder of folders) {
      assert.deepEqual(textsWith(folder, binary), []);
    }
  });
}
