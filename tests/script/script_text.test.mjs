// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { spawnSync } from 'node:child_process';
import os from 'node:os';
import path from 'node:path';
import { after, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { Parser, tokenizer } from 'acorn';
import { ESLint } from 'eslint';
import { libraryScript } from '../../eslint.config.js';
import { toCppSource } from '../../src/orvane/build/cpp_source.mjs';
import { joinScript } from '../../src/orvane/build/script_text.mjs';
import { scriptText } from './fake_runtime.mjs';

const tool = fileURLToPath(new URL('../../src/orvane/build/make_script_text.mjs', import.meta.url));
const folder = mkdtempSync(path.join(os.tmpdir(), 'orvane-script-'));
after(() => rmSync(folder, { recursive: true }));

// Names, numbers and texts of a script, in order.
function tokensOf(text) {
  return [...tokenizer(text, { ecmaVersion: 2015 })].map((token) => String(token.value ?? ''));
}

test('ScriptText is one line of printable ASCII', () => {
  assert.match(scriptText, /^[\x20-\x7e]+$/);
});

test('ScriptText has no comment', () => {
  const comments = [];

  Parser.parse(scriptText, { ecmaVersion: 2015, onComment: comments });

  assert.deepEqual(comments, []);
});

test('ScriptText parses as ES2015 in a strict function', () => {
  assert.doesNotThrow(() =>
    Parser.parse(`(function(extension){"use strict";let exports={};${scriptText}})`, {
      ecmaVersion: 2015,
    })
  );
});

test('ScriptText keeps every name of the readable files', () => {
  const isName = (text) => /^[A-Za-z_$][\w$]*$/.test(text);

  const built = tokensOf(scriptText).filter(isName);

  assert.deepEqual(built, tokensOf(joinScript()).filter(isName));
  assert.ok(built.length > 500);
});

test('ScriptText begins with the runtime facilities in their order', () => {
  const begin =
    'const native=new xwalk.utils.NativeManager(extension);' +
    'const validator_=xwalk.utils.validator;const _converter=xwalk.utils.converter;' +
    'const type_=validator_.Types;const validatorType=xwalk.utils.type;' +
    'function OrvaneManager(){}const cache=new Map;';

  assert.equal(scriptText.slice(0, begin.length), begin);
});

test('ScriptText ends with the export', () => {
  const { body } = Parser.parse(scriptText, { ecmaVersion: 2015 });
  const last = body.at(-1).expression;

  assert.equal(last.left.name, 'exports');
  assert.equal(last.right.callee.name, 'OrvaneManager');
});

test('JoinedScript declares and uses every name', async () => {
  const eslint = new ESLint({ overrideConfigFile: true, overrideConfig: libraryScript });
  const expected = [/'exports' is assigned a value but never used/];

  const [{ messages }] = await eslint.lintText(joinScript());

  const ofNames = messages.filter(({ ruleId }) => !ruleId?.startsWith('max-'));
  const texts = ofNames.map(({ message }) => message);
  const surprises = texts.filter((text) => !expected.some((pattern) => pattern.test(text)));
  assert.deepEqual(surprises, []);
});

test('CppSource escapes quotes, backslashes and trigraphs', () => {
  const source = toCppSource('a"b\\c??=d');

  assert.match(source, /"a\\"b\\\\c\?\\\?=d";/);
});

test('CppSource literals join to the script text', () => {
  const source = toCppSource(scriptText);
  const literals = source.match(/^ {4}".*"/gm).map((line) => line.trim());

  const joined = literals.map((literal) => literal.slice(1, -1).replace(/\\(.)/g, '$1')).join('');

  assert.equal(joined, scriptText);
});

test('Tool writes the C++ source and the text', () => {
  const cc = path.join(folder, 'made/api.cc');
  const js = path.join(folder, 'made/api.js');

  const run = spawnSync(process.execPath, [tool, '--cc', cc, '--js', js], { encoding: 'utf8' });

  assert.equal(run.stderr, '');
  assert.equal(run.status, 0);
  assert.equal(readFileSync(js, 'utf8'), scriptText);
  assert.equal(readFileSync(cc, 'utf8'), toCppSource(scriptText));
});

test('Tool stops with the faulty row of a device key file and writes nothing', () => {
  const keys = path.join(folder, 'keys.json');
  const cc = path.join(folder, 'not_made.cc');
  writeFileSync(keys, '[{"name": "Home", "keyName": "XF86Home2", "keyCode": -1}]');

  const run = spawnSync(process.execPath, [tool, '--device-keys', keys, '--cc', cc], {
    encoding: 'utf8',
  });

  assert.equal(run.status, 1);
  assert.match(run.stderr, /row 1 \("Home"\): keyCode is -1; write a whole number/);
  assert.doesNotMatch(run.stderr, /\bat .*\.mjs/);
  assert.throws(() => readFileSync(cc));
});

test('Tool says where the output goes when it is not told', () => {
  const run = spawnSync(process.execPath, [tool], { encoding: 'utf8' });

  assert.equal(run.status, 1);
  assert.match(run.stderr, /--cc FILE/);
});
