// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

import { getValues } from './builtins.js';

// Questions about the type of a value.
export function makeType() {
  return {
    isNull: (value) => value === null,
    isUndefined: (value) => value === undefined,
    isNullOrUndefined: (value) => value === null || value === undefined,
    isBoolean: (value) => typeof value === 'boolean',
    isNumber: (value) => typeof value === 'number',
    isString: (value) => typeof value === 'string',
    isFunction: (value) => typeof value === 'function',
    isArray: (value) => Array.isArray(value),
    isDate: (value) => value instanceof Date,
    isObject: (value) => value !== null && typeof value === 'object',
    isEmptyObject: (value) =>
      value !== null && typeof value === 'object' && Object.keys(value).length === 0,
    isA: (value, constructor) => value instanceof constructor,
    // The values of an enumeration object, in declaration order.
    getValues: (enumeration) => getValues(enumeration),
    arrayContains: (array, value) => array.indexOf(value) !== -1,
  };
}
