// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { mkdtempSync, readFileSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { spawnSync } from 'node:child_process';
import os from 'node:os';
import path from 'node:path';
import { after, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { Parser } from 'acorn';
import { namesIn, namesOfModules } from '../../src/orvane/build/script_text.mjs';
import { scriptText } from './fake_runtime.mjs';

const tool = fileURLToPath(new URL('../../src/orvane/build/make_script_text.mjs', import.meta.url));
const folder = mkdtempSync(path.join(os.tmpdir(), 'orvane-script-'));
after(() => rmSync(folder, { recursive: true }));

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

test('ScriptText keeps every name of its modules, in their order, and has no other', () => {
  const names = namesIn(scriptText);

  assert.deepEqual(names, namesOfModules());
  assert.ok(names.length > 500);
});

test('ScriptText is made of every file of the folder', () => {
  const files = new Set();

  namesOfModules('./export.js', files);

  const api = new URL('../../src/orvane/api/', import.meta.url);
  assert.deepEqual(
    [...files].sort(),
    readdirSync(api)
      .map((file) => `./${file}`)
      .sort()
  );
});

test('ScriptText begins with the runtime facilities in their order', () => {
  const begin =
    'var native=new xwalk.utils.NativeManager(extension);' +
    'var validator_=xwalk.utils.validator;var _converter=xwalk.utils.converter;' +
    'var type_=validator_.Types;var validatorType=xwalk.utils.type;' +
    'function OrvaneManager(){}var cache=new Map;';

  assert.equal(scriptText.slice(0, begin.length), begin);
});

test('ScriptText ends with the export', () => {
  const { body } = Parser.parse(scriptText, { ecmaVersion: 2015 });
  const last = body.at(-1).expression;

  assert.equal(last.left.name, 'exports');
  assert.equal(last.right.callee.name, 'OrvaneManager');
});

test('Tool writes the text', () => {
  const js = path.join(folder, 'made/api.js');

  const run = spawnSync(process.execPath, [tool, '--js', js], { encoding: 'utf8' });

  assert.equal(run.stderr, '');
  assert.equal(run.status, 0);
  assert.equal(readFileSync(js, 'utf8'), scriptText);
});

test('Tool stops with the faulty row of a device key file and writes nothing', () => {
  const keys = path.join(folder, 'keys.json');
  const js = path.join(folder, 'not_made.js');
  writeFileSync(keys, '[{"name": "Home", "keyName": "XF86Home2", "keyCode": -1}]');

  const run = spawnSync(process.execPath, [tool, '--device-keys', keys, '--js', js], {
    encoding: 'utf8',
  });

  assert.equal(run.status, 1);
  assert.match(run.stderr, /row 1 \("Home"\): keyCode is -1; write a whole number/);
  assert.doesNotMatch(run.stderr, /\bat .*\.mjs/);
  assert.throws(() => readFileSync(js));
});

test('Tool says where the output goes when it is not told', () => {
  const run = spawnSync(process.execPath, [tool], { encoding: 'utf8' });

  assert.equal(run.status, 1);
  assert.match(run.stderr, /--js FILE/);
});
