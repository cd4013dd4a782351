// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The script text as a C++ source.

const CHUNK_LENGTH = 90;

// A source that defines kSource_orvane_api as one NUL-terminated array. The text is ASCII without
// line breaks; it stands in adjacent literals, which the compiler joins.
export function toCppSource(scriptText) {
  const literals = [];
  for (let start = 0; start < scriptText.length; start += CHUNK_LENGTH) {
    literals.push(`    "${escapeForCpp(scriptText.slice(start, start + CHUNK_LENGTH))}"`);
  }
  return [
    '// Made from src/orvane/api/ by src/orvane/build/make_script_text.mjs: change it there.',
    '#include "orvane/orvane_api.h"',
    '',
    'const char kSource_orvane_api[] =',
    `${literals.join('\n')};`,
    '',
  ].join('\n');
}

// Every second question mark of a pair is escaped, so that no trigraph can arise.
function escapeForCpp(text) {
  return text.replace(/[\\"]/g, '\\$&').replace(/\?(?=\?)/g, '?\\');
}
