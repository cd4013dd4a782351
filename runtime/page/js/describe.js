// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// How error texts name a value: `the string "abc"`, `an array`, `null`.
(function makeDescribe() {
  'use strict';

  const longestText = 60;

  function literal(value) {
    return typeof value === 'string' ? JSON.stringify(value) : String(value);
  }

  function describe(value) {
    switch (typeof value) {
      case 'string': {
        const text = value.length > longestText ? `${value.slice(0, longestText)}\u2026` : value;
        return `the string ${JSON.stringify(text)}`;
      }
      case 'undefined':
        return 'undefined';
      case 'function':
        return 'a function';
      case 'object':
        if (value === null) {
          return 'null';
        }
        return Array.isArray(value) ? 'an array' : 'an object';
      default:
        return `the ${typeof value} ${String(value)}`;
    }
  }

  describe.literal = literal;
  return describe;
});
