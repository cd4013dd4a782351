// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { parseDeviceKeys } from '../../src/orvane/build/device_keys.mjs';
import { defaultDeviceKeysFile } from '../../src/orvane/build/script_text.mjs';
import { generatekeys, genericRegisterkeys, mandatorykeys } from './expected_keys.mjs';

const genericRows = [...mandatorykeys, ...generatekeys, ...genericRegisterkeys];

function goodRows() {
  return Array.from({ length: 27 }, (_, index) => ({
    name: `Key${index + 1}`,
    keyName: `XF86Key${index + 1}`,
    keyCode: 20001 + index,
  }));
}

function parse(rows) {
  return parseDeviceKeys(JSON.stringify(rows), 'keys.json', genericRows);
}

function problemOf(rows) {
  try {
    parse(rows);
  } catch (error) {
    assert.equal(error.name, 'DeviceKeysError');
    return error.message;
  }
  return 'no problem';
}

// The good rows with one row changed.
function withRow(number, change) {
  const rows = goodRows();
  rows[number - 1] = { ...rows[number - 1], ...change };
  return rows;
}

test('DeviceKeys gives the rows in file order', () => {
  const rows = parse(goodRows());

  assert.equal(rows.length, 27);
  assert.deepEqual(rows[0], ['Key1', 'XF86Key1', 20001]);
  assert.deepEqual(rows[26], ['Key27', 'XF86Key27', 20027]);
});

// What is refused, the rows, and the part of the message that says so.
const refusals = [
  ['26 rows', goodRows().slice(1), 'keys.json: has 26 rows, 27 are needed; row 27 is missing'],
  [
    '28 rows',
    [...goodRows(), { name: 'More1', keyName: 'X', keyCode: 5 }],
    'keys.json: has 28 rows, 27 are needed; take out row 28 ("More1") and what follows',
  ],
  ['no rows', [], 'row 1 is missing, add it'],
  ['an object', {}, 'keys.json: is not a JSON array; write the rows between [ and ]'],
  [
    'a name twice',
    withRow(9, { name: 'Key3' }),
    'row 9 ("Key3"): the name is already used by row 3; choose another name',
  ],
  [
    'the name of a generic key',
    withRow(2, { name: 'Soccer' }),
    'row 2 ("Soccer"): the name is already used by the generic keys; choose another name',
  ],
  ['the name of a mandatory key', withRow(2, { name: 'Back' }), 'row 2 ("Back"): the name is'],
  ['the name of a digit key', withRow(2, { name: '5' }), 'row 2 ("5"): the name is already'],
  [
    'a code twice',
    withRow(12, { keyCode: 20004 }),
    'row 12 ("Key12"): keyCode 20004 already belongs to "Key4"; give this key its own code',
  ],
  [
    'the code of a generic key',
    withRow(1, { keyCode: 10199 }),
    'row 1 ("Key1"): keyCode 10199 already belongs to "3D"',
  ],
  ['the code of a mandatory key', withRow(1, { keyCode: 10009 }), 'already belongs to "Back"'],
  [
    'the code that only generatekeyMap has',
    withRow(1, { keyCode: 10176 }),
    'keyCode 10176 already belongs to "MediaRewind"',
  ],
  ['code 0', withRow(4, { keyCode: 0 }), 'row 4 ("Key4"): keyCode is 0; write a whole number'],
  ['a negative code', withRow(4, { keyCode: -3 }), 'row 4 ("Key4"): keyCode is -3;'],
  ['a fractional code', withRow(4, { keyCode: 1.5 }), 'row 4 ("Key4"): keyCode is 1.5;'],
  ['a code as text', withRow(4, { keyCode: '77' }), 'row 4 ("Key4"): keyCode is "77";'],
  ['a code beyond 31 bits', withRow(4, { keyCode: 2 ** 31 }), 'keyCode is 2147483648;'],
  ['a row without a code', withRow(4, { keyCode: undefined }), 'keyCode is undefined;'],
  ['a row without a name', withRow(5, { name: undefined }), 'row 5 (without a name): name is'],
  ['an empty name', withRow(5, { name: '' }), 'row 5 (""): name is ""; write a text'],
  ['a name of a prototype', withRow(5, { name: '__proto__' }), 'row 5 ("__proto__"): name is'],
  ['a symbol with a comma', withRow(6, { keyName: 'A,B' }), 'row 6 ("Key6"): keyName is "A,B";'],
  ['an unknown member', withRow(7, { code: 5 }), 'row 7 ("Key7"): has an unknown member "code"'],
  ['null for a row', [...goodRows().slice(1), null], 'row 27 (without a name): is not an object'],
  ['an array for a row', [...goodRows().slice(1), []], 'row 27 (without a name): is not an object'],
];

for (const [what, rows, problem] of refusals) {
  test(`DeviceKeys refuses ${what}`, () => {
    const message = problemOf(rows);

    assert.ok(message.includes(problem), message);
  });
}

test('DeviceKeys refuses a text that is no JSON', () => {
  assert.throws(
    () => parseDeviceKeys('[{]', 'keys.json', genericRows),
    /^DeviceKeysError: keys\.json: is not JSON \(.*\); correct it there$/
  );
});

test('DeviceKeys names every problem at once', () => {
  const rows = withRow(2, { keyCode: 0 });
  rows[9].name = 'Menu';

  const lines = problemOf(rows).split('\n');

  assert.equal(lines.length, 2);
  assert.match(lines[0], /row 2/);
  assert.match(lines[1], /row 10/);
});

test('DeviceKeys lets one row share the code of QuickAccess', () => {
  assert.equal(parse(withRow(3, { keyCode: 10591 }))[2][2], 10591);
});

test('DeviceKeys refuses a second row with the code of QuickAccess', () => {
  const rows = withRow(3, { keyCode: 10591 });
  rows[7].keyCode = 10591;

  assert.match(problemOf(rows), /row 8 \("Key8"\): keyCode 10591 already belongs to "Key3"/);
});

test('DefaultDeviceKeys share 10591 in exactly one row, a content-provider key', () => {
  const text = readFileSync(defaultDeviceKeysFile, 'utf8');

  const rows = parseDeviceKeys(text, defaultDeviceKeysFile, genericRows);

  const sharing = rows.filter(([, , code]) => code === 10591).map(([name]) => name);
  assert.deepEqual(sharing, ['RegionalContent1']);
});
