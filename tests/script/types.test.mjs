// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The TypeScript declarations against the script that they describe.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import ts from 'typescript';
import { declarations, declarationsFile } from '../../keys/make_types.mjs';
import { defaultDeviceKeysFile } from '../../src/orvane/build/script_text.mjs';
import { generatekeys, genericRegisterkeys, mandatorykeys } from './expected_keys.mjs';
import { FakeRuntime } from './fake_runtime.mjs';

const folder = fileURLToPath(new URL('../../types/', import.meta.url));
const { config } = ts.readConfigFile(`${folder}tsconfig.json`, ts.sys.readFile);
const { options, fileNames } = ts.parseJsonConfigFileContent(config, ts.sys, folder);
const program = ts.createProgram(fileNames, options);
const checker = program.getTypeChecker();

// Everything declared in dravelt.orvane, by name.
function declaredTypes() {
  const file = program.getSourceFile(`${folder}orvane.d.ts`);
  const [dravelt] = checker
    .getSymbolsInScope(file, ts.SymbolFlags.Namespace)
    .filter(({ name }) => name === 'dravelt');
  const [orvane] = checker.getExportsOfModule(dravelt).filter(({ name }) => name === 'orvane');
  const symbols = checker.getExportsOfModule(orvane);
  return new Map(symbols.map((symbol) => [symbol.name, checker.getDeclaredTypeOfSymbol(symbol)]));
}

const types = declaredTypes();
const valuesOf = (name) => types.get(name).types.map(({ value }) => value);
const membersOf = (name) =>
  types
    .get(name)
    .getProperties()
    .map((symbol) => symbol.name);
const sorted = (names) => [...names].sort();
const namesOf = (rows) => rows.map(([name]) => name);

test('Declarations and their uses compile, and misuses do not', () => {
  const problems = ts
    .getPreEmitDiagnostics(program)
    .map(({ messageText }) => ts.flattenDiagnosticMessageText(messageText, '\n'));

  assert.deepEqual(problems, []);
});

test('Declarations of key names are those that keys/make_types.mjs writes', () => {
  assert.equal(readFileSync(declarationsFile, 'utf8'), declarations());
});

test('Declarations name every member of the object', () => {
  const members = Object.keys(Object.getPrototypeOf(new FakeRuntime().orvane));

  assert.deepEqual(sorted(membersOf('OrvaneManager')), sorted(members));
});

test('Declarations have as many parameters as the methods', () => {
  const { orvane } = new FakeRuntime();
  const methods = types.get('OrvaneManager').getProperties();
  const file = program.getSourceFile(`${folder}orvane.d.ts`);

  for (const symbol of methods.filter(({ flags }) => flags & ts.SymbolFlags.Method)) {
    for (const signature of checker.getTypeOfSymbolAtLocation(symbol, file).getCallSignatures()) {
      assert.equal(signature.getParameters().length, orvane[symbol.name].length, symbol.name);
    }
  }
});

test('Declarations name the keys of the tables', () => {
  assert.deepEqual(sorted(valuesOf('MandatoryKeyName')), sorted(namesOf(mandatorykeys)));
  assert.deepEqual(sorted(valuesOf('GeneratableKeyName')), sorted(namesOf(generatekeys)));
  assert.deepEqual(sorted(valuesOf('GenericKeyName')), sorted(namesOf(genericRegisterkeys)));
});

test('Declarations name the keys of the default device key file', () => {
  const rows = JSON.parse(readFileSync(defaultDeviceKeysFile, 'utf8'));

  assert.deepEqual(
    membersOf('DeviceKeyNames'),
    rows.map(({ name }) => name)
  );
});

for (const name of [
  'OrvaneTarget',
  'OrvaneAction',
  'OrvaneScreenSaverState',
  'OrvaneRecommendedWordsType',
]) {
  test(`Declarations have the values of ${name}`, () => {
    const declared = types
      .get(name)
      .getProperties()
      .map((symbol) => [symbol.name, checker.getTypeOfSymbol(symbol).value]);

    assert.deepEqual(declared, Object.entries(new FakeRuntime().orvane[name]));
  });
}

test('Declarations name the members of the private enumerations', () => {
  const keys = (name) => Object.keys(new FakeRuntime().evaluate(name));

  for (const name of ['OrvaneAlign', 'OrvaneKeyGrabMode', 'OrvaneWindowStackMode']) {
    assert.deepEqual(sorted(valuesOf(name)), sorted(keys(name)), name);
  }
});
