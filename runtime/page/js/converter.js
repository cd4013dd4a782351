// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Conversions with the rules of the platform's web APIs. Each takes the value and, last, whether
// null may pass; each throws a TypeMismatchError for what cannot be converted.
(function makeConverter(use) {
  'use strict';

  const { WebAPIException } = use('exceptions');
  const describe = use('describe');

  function fail(value, wanted) {
    throw new WebAPIException(
      WebAPIException.TYPE_MISMATCH_ERR,
      `Cannot convert ${describe(value)} to ${wanted}.`
    );
  }

  function toNumber(value, wanted) {
    // Number() itself throws for a symbol and for an object that cannot be made a primitive.
    let number = NaN;
    try {
      number = Number(value);
    } catch (error) {
      fail(value, wanted);
    }
    return Number.isFinite(number) ? number : fail(value, wanted);
  }

  // A number beyond the range becomes the nearest one in it; a fraction is cut off.
  function integer(wanted, lowest, highest) {
    return (value, nullable) => {
      if (nullable && value === null) {
        return null;
      }
      const number = Math.trunc(toNumber(value, wanted));
      return Math.min(Math.max(number, lowest), highest) + 0;
    };
  }

  function toDouble(value, nullable) {
    return nullable && value === null ? null : toNumber(value, 'a number');
  }

  function toString(value, nullable) {
    if (nullable && value === null) {
      return null;
    }
    try {
      return `${value}`;
    } catch (error) {
      return fail(value, 'a string');
    }
  }

  function toBoolean(value, nullable) {
    return nullable && value === null ? null : Boolean(value);
  }

  // For the types that have no conversion: the value itself, or an error.
  function passes(wanted, test) {
    return (value, nullable) => {
      if ((nullable && value === null) || test(value)) {
        return value;
      }
      return fail(value, wanted);
    };
  }

  const isObject = (value) => value !== null && typeof value === 'object';

  function toEnum(value, values, nullable) {
    if (nullable && value === null) {
      return null;
    }
    const found = values.find(
      (candidate) => candidate === value || String(candidate) === toString(value)
    );
    return found === undefined
      ? fail(value, `one of ${values.map(describe.literal).join(', ')}`)
      : found;
  }

  function toPlatformObject(value, constructors, nullable) {
    const list = Array.isArray(constructors) ? constructors : [constructors];
    if ((nullable && value === null) || list.some((constructor) => value instanceof constructor)) {
      return value;
    }
    return fail(value, `one of ${list.map((constructor) => constructor.name).join(', ')}`);
  }

  const unsignedLongLong = integer('a whole number', 0, Number.MAX_SAFE_INTEGER);
  return Object.freeze({
    toByte: integer('a whole number', -128, 127),
    toOctet: integer('a whole number', 0, 255),
    toShort: integer('a whole number', -32768, 32767),
    toUnsignedShort: integer('a whole number', 0, 65535),
    toLong: integer('a whole number', -2147483648, 2147483647),
    toUnsignedLong: integer('a whole number', 0, 4294967295),
    toLongLong: integer('a whole number', Number.MIN_SAFE_INTEGER, Number.MAX_SAFE_INTEGER),
    toUnsignedLongLong: unsignedLongLong,
    toDouble,
    toString,
    toBoolean,
    toArray: passes('an array', Array.isArray),
    toDictionary: passes('an object', (value) => isObject(value) && !Array.isArray(value)),
    toFunction: passes('a function', (value) => typeof value === 'function'),
    toEnum,
    toPlatformObject,
  });
});
