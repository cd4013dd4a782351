// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { mkdirSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import { findViolations, readFloors } from '../../script/check_includes.mjs';

const floors = readFloors(`
## Folders

| \`simulator/\` | not this table |

## Floors

| Folder | Stands on |
|---|---|
| \`runtime/base/\` | |
| \`runtime/app/\` | \`runtime/base/\` |
| \`runtime/server/web/\` | \`runtime/app/\` |
| \`runtime/server/\` | \`runtime/server/web/\` |

## Threads

| \`extension thread\` | nor this one |
`);

// The violations in a repository of the given files.
function violations(files) {
  const root = mkdtempSync(path.join(os.tmpdir(), 'includes-'));
  try {
    for (const [file, text] of Object.entries(files)) {
      mkdirSync(path.dirname(path.join(root, file)), { recursive: true });
      writeFileSync(path.join(root, file), text);
    }
    return findViolations(root, floors);
  } finally {
    rmSync(root, { recursive: true });
  }
}

const header = { 'runtime/base/text.h': '', 'runtime/app/config.h': '' };

test('Floors are the rows of their own section', () => {
  assert.deepEqual(
    [...floors],
    [
      ['runtime/base', []],
      ['runtime/app', ['runtime/base']],
      ['runtime/server/web', ['runtime/app']],
      ['runtime/server', ['runtime/server/web']],
    ]
  );
});

test('Floors refuse a row that names a folder without a row', () => {
  assert.throws(() => readFloors('## Floors\n\n| `a/` | `b/` |\n'), /has no row for b$/);
});

test('An include may point to the own folder, and down past several floors', () => {
  const files = {
    ...header,
    'runtime/server/web/site.cc': '#include "server/web/site.h"\n#include "base/text.h"\n',
    'runtime/server/web/site.h': '#include <string>\n#include "app/config.h"\n',
  };

  assert.deepEqual(violations(files), []);
});

test('An include that points up is named with its file, line and rule', () => {
  const files = { ...header, 'runtime/base/text.cc': '\n  # include "app/config.h"\n' };

  assert.deepEqual(violations(files), [
    'runtime/base/text.cc:2: includes "app/config.h" of runtime/app; runtime/base stands on ' +
      'nothing (docs/architecture.md)',
  ]);
});

test('A header is found beside the file that includes it, and in angle brackets', () => {
  const files = {
    'runtime/server/run.h': '',
    'runtime/server/web/a.cc': '#include "../run.h"\n#include <server/run.h>\n',
  };

  assert.equal(violations(files).length, 2);
});

test('A folder that no row has is named', () => {
  const [problem] = violations({ 'runtime/new/file.cc': '' });

  assert.match(problem, /^runtime\/new\/file\.cc: no row /);
});

test('A table in which folders stand on each other is refused', () => {
  const circle = readFloors(
    '## Floors\n\n| `runtime/a/` | `runtime/b/` |\n| `runtime/b/` | `runtime/a/` |\n'
  );
  const root = mkdtempSync(path.join(os.tmpdir(), 'includes-'));
  mkdirSync(path.join(root, 'runtime/a'), { recursive: true });
  writeFileSync(path.join(root, 'runtime/a/x.h'), '');

  assert.throws(() => findViolations(root, circle), /runtime\/a stands on runtime\/b stands on/);
  rmSync(root, { recursive: true });
});
