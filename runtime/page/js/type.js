// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Questions about the type of a value.
(function makeType() {
  'use strict';

  const isNull = (value) => value === null;
  const isUndefined = (value) => value === undefined;
  const isObject = (value) => value !== null && typeof value === 'object';

  return Object.freeze({
    isNull,
    isUndefined,
    isNullOrUndefined: (value) => value === null || value === undefined,
    isBoolean: (value) => typeof value === 'boolean',
    isNumber: (value) => typeof value === 'number',
    isString: (value) => typeof value === 'string',
    isFunction: (value) => typeof value === 'function',
    isArray: (value) => Array.isArray(value),
    isDate: (value) => value instanceof Date,
    isObject,
    isEmptyObject: (value) => isObject(value) && Object.keys(value).length === 0,
    isA: (value, constructor) => value instanceof constructor,
    // The values of an enumeration object, in declaration order.
    getValues: (enumeration) => Object.values(enumeration),
    arrayContains: (array, value) => array.indexOf(value) !== -1,
  });
});
