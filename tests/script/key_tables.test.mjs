// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { buildScriptText, defaultDeviceKeysFile } from '../../src/orvane/build/script_text.mjs';
import { generatekeys, genericRegisterkeys, mandatorykeys } from './expected_keys.mjs';
import { FakeRuntime } from './fake_runtime.mjs';

const deviceKeys = JSON.parse(readFileSync(defaultDeviceKeysFile, 'utf8')).map((row) => [
  row.name,
  row.keyName,
  row.keyCode,
]);
const registerkeys = [...genericRegisterkeys, ...deviceKeys];

function privateTable(name) {
  return new FakeRuntime().evaluate(`(loadKeyTables(), ${name})`);
}

// The rows of a table, looked up name by name in the expected order.
function lookUp(table, rows) {
  return rows.map(([name]) => [name, ...Object.values(table[name] ?? {})]);
}

function listKeys() {
  return [...new FakeRuntime().orvane.getSpecialSupportedKeys()];
}

test('Tables have 6, 24 and 114 + 27 rows', () => {
  const count = (name) => Object.keys(privateTable(name)).length;

  assert.equal(count('mandatorykeyMap'), 6);
  assert.equal(count('generatekeyMap'), 24);
  assert.equal(count('registerkeyMap'), 141);
  assert.equal(genericRegisterkeys.length, 114);
});

for (const [name, rows] of Object.entries({
  mandatorykeyMap: mandatorykeys,
  generatekeyMap: generatekeys,
  registerkeyMap: registerkeys,
})) {
  test(`Tables hold every row of ${name}`, () => {
    assert.deepEqual(lookUp(privateTable(name), rows), rows);
  });
}

test('Tables name the members of a row', () => {
  const { keyName, keyCode, xkeyCode } = privateTable('generatekeyMap').VolumeUp;

  assert.deepEqual(
    { keyName, keyCode, xkeyCode },
    {
      keyName: 'XF86AudioRaiseVolume',
      keyCode: 447,
      xkeyCode: 76,
    }
  );
  assert.deepEqual(Object.keys(privateTable('registerkeyMap').Power), ['keyName', 'keyCode']);
});

test('Tables keep mandatory and generated keys in declaration order', () => {
  assert.deepEqual(
    Object.keys(privateTable('mandatorykeyMap')),
    mandatorykeys.map(([n]) => n)
  );
  assert.deepEqual(
    Object.keys(privateTable('generatekeyMap')),
    generatekeys.map(([n]) => n)
  );
});

test('Tables give two keys another code for registering than for generating', () => {
  const code = (table, name) => privateTable(table)[name].keyCode;

  assert.equal(code('generatekeyMap', 'MediaRewind'), 10176);
  assert.equal(code('registerkeyMap', 'MediaRewind'), 412);
  assert.equal(code('generatekeyMap', 'MediaFastForward'), 10216);
  assert.equal(code('registerkeyMap', 'MediaFastForward'), 417);
});

test('RegisterTable shares codes in the two known pairs only', () => {
  const byCode = new Map();
  for (const [name, , code] of registerkeys) {
    byCode.set(code, [...(byCode.get(code) ?? []), name]);
  }

  const shared = [...byCode.values()].filter((names) => names.length > 1);

  assert.deepEqual(shared, [
    ['QuickAccess', 'RegionalContent1'],
    ['SysMenu', 'Menu'],
  ]);
});

test('getSpecialSupportedKeys lists 141 keys in declaration order, digits included', () => {
  const listed = listKeys().map(({ name, code }) => [name, code]);

  assert.deepEqual(
    listed,
    registerkeys.map(([name, , code]) => [name, code])
  );
  const extra = listed.findIndex(([name]) => name === 'Extra');
  assert.deepEqual(listed.slice(extra, extra + 3), [
    ['Extra', 10253],
    ['0', 48],
    ['1', 49],
  ]);
});

test('getSpecialSupportedKeys leaves the mandatory keys out', () => {
  const names = listKeys().map(({ name }) => name);

  assert.deepEqual(
    mandatorykeys.filter(([name]) => names.includes(name)),
    []
  );
});

test('getSpecialSupportedKeys sends, validates and logs nothing', () => {
  const runtime = new FakeRuntime();

  runtime.orvane.getSpecialSupportedKeys();

  assert.deepEqual(runtime.events, []);
});

test('getSpecialSupportedKeys lists integer-like device names in file order', async () => {
  const names = deviceKeys.map(([name]) => name);
  const text = await buildScriptText(defaultDeviceKeysFile);
  const renamed = text.replace(JSON.stringify(names[3]), '"77"');

  const runtime = new FakeRuntime({ text: renamed });

  assert.equal(runtime.orvane.getSpecialSupportedKeys()[117].name, '77');
});

test('TVInputDeviceKey refuses every change', () => {
  const runtime = new FakeRuntime();
  const change = (statement) => () =>
    runtime.runPage(`const key = dravelt.orvane.getSpecialSupportedKeys()[0]; ${statement}`);

  for (const statement of [
    'key.name = "X"',
    'key.code = 1',
    'key.more = 1',
    'delete key.name',
    'Object.defineProperty(key, "code", { value: 2 })',
  ]) {
    assert.throws(change(statement), { name: 'TypeError' }, statement);
  }
});

test('TVInputDeviceKey is frozen and has enumerable name and code', () => {
  const [key] = listKeys();

  assert.ok(Object.isFrozen(key));
  assert.deepEqual(Object.keys(key), ['name', 'code']);
  assert.equal(key.constructor.name, 'TVInputDeviceKey');
});

test('TVInputDeviceKey copies own properties only', () => {
  const key = new FakeRuntime().evaluate(
    'new TVInputDeviceKey(Object.create({ inherited: 1 }, { own: { value: 2, enumerable: true } }))'
  );

  assert.deepEqual(Object.getOwnPropertyNames(key), ['own']);
  assert.equal(key.own, 2);
});

test('getSpecialSupportedKeys gives each caller its own list', () => {
  const { orvane } = new FakeRuntime();

  orvane.getSpecialSupportedKeys().length = 0;

  assert.equal(orvane.getSpecialSupportedKeys().length, 141);
});
