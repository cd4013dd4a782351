// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

import { isFinite, toNumber } from './builtins.js';

// Conversions with the rules of the platform's web APIs. Each takes the value and, last, whether
// null may pass; each throws a TypeMismatchError for what cannot be converted. A whole number
// beyond its type's range becomes the nearest one in it, and a fraction is cut off.
export function makeConverter(use) {
  function fail(value, wanted) {
    const WebAPIException = use('exceptions');
    throw new WebAPIException(
      WebAPIException.TYPE_MISMATCH_ERR,
      `Cannot convert ${use('describe').value(value)} to ${wanted}.`
    );
  }

  function number(value, wanted) {
    let converted = NaN;
    try {
      // Throws for a symbol, and for an object that cannot be made a primitive.
      converted = toNumber(value);
    } catch (error) {
      fail(value, wanted);
    }
    return isFinite(converted) ? converted : fail(value, wanted);
  }

  function whole(value, nullable, lowest, highest) {
    if (nullable && value === null) {
      return null;
    }
    const converted = Math.trunc(number(value, 'a whole number'));
    return Math.min(Math.max(converted, lowest), highest) + 0;
  }

  // For the types that have no conversion.
  function check(value, nullable, passes, wanted) {
    return (nullable && value === null) || passes ? value : fail(value, wanted);
  }

  return {
    toByte: (value, nullable) => whole(value, nullable, -128, 127),
    toOctet: (value, nullable) => whole(value, nullable, 0, 255),
    toShort: (value, nullable) => whole(value, nullable, -32768, 32767),
    toUnsignedShort: (value, nullable) => whole(value, nullable, 0, 65535),
    toLong: (value, nullable) => whole(value, nullable, -2147483648, 2147483647),
    toUnsignedLong: (value, nullable) => whole(value, nullable, 0, 4294967295),
    toLongLong: (value, nullable) =>
      whole(value, nullable, Number.MIN_SAFE_INTEGER, Number.MAX_SAFE_INTEGER),
    toUnsignedLongLong: (value, nullable) => whole(value, nullable, 0, Number.MAX_SAFE_INTEGER),

    toDouble: (value, nullable) => (nullable && value === null ? null : number(value, 'a number')),

    toString(value, nullable) {
      if (nullable && value === null) {
        return null;
      }
      try {
        return `${value}`;
      } catch (error) {
        return fail(value, 'a string');
      }
    },

    toBoolean: (value, nullable) => (nullable && value === null ? null : Boolean(value)),

    toArray: (value, nullable) => check(value, nullable, Array.isArray(value), 'an array'),

    toDictionary: (value, nullable) =>
      check(
        value,
        nullable,
        value !== null && typeof value === 'object' && !Array.isArray(value),
        'an object'
      ),

    toFunction: (value, nullable) =>
      check(value, nullable, typeof value === 'function', 'a function'),

    // The allowed value that is the given one, or is written like it.
    toEnum(value, values, nullable) {
      if (nullable && value === null) {
        return null;
      }
      const text = this.toString(value);
      const found = values.find((candidate) => candidate === value || String(candidate) === text);
      return found === undefined ? fail(value, use('describe').oneOf(values)) : found;
    },

    // `constructors` is one, or an array of them.
    toPlatformObject(value, constructors, nullable) {
      const list = [].concat(constructors);
      return check(
        value,
        nullable,
        list.some((constructor) => value instanceof constructor),
        use('describe').madeBy(list)
      );
    },
  };
}
