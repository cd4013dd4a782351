// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

import { hasOwn, isArray, isFinite, isInteger } from './builtins.js';

// The argument rules of the platform's web APIs. A method gives the arguments it was called with
// and one rule for each: { name, type, optional, nullable, values }. What is optional may be
// undefined or absent, what is nullable may be null. `values` means, by type: ENUM the allowed
// values; ARRAY the type of its elements (a type's name, or a constructor); DICTIONARY rules for
// its members; LISTENER the names of its callbacks; PLATFORM_OBJECT a constructor or an array of
// them.
//
// Both checks throw a TypeMismatchError that names the argument, what came and what is wanted. Both
// return an object with one property per rule, and `has`, which tells the arguments that were
// given.
export function makeValidator(use) {
  const isObject = (value) => value !== null && typeof value === 'object' && !isArray(value);

  const isWhole = (value, lowest, highest) =>
    isInteger(value) && value >= lowest && value <= highest;

  function isAmong(values, value) {
    for (let index = 0; index < values.length; index += 1) {
      if (values[index] === value) {
        return true;
      }
    }
    return false;
  }

  // Whether the rule itself allows it; a page may have put a member of that name on every object.
  const allows = (rule, what) => hasOwn(rule, what) && rule[what];

  // Whether the value is of the type, without any conversion. Throws a Misfit when a part of it is
  // not.
  function fits(type, value, values) {
    switch (type) {
      case 'STRING':
        return typeof value === 'string';
      case 'FUNCTION':
        return typeof value === 'function';
      case 'BOOLEAN':
        return typeof value === 'boolean';
      case 'ENUM':
        return isAmong(values, value);
      case 'DOUBLE':
        return isFinite(value);
      case 'ARRAY':
        return isArray(value) && (values === undefined || elementsFit(value, values));
      case 'DICTIONARY':
        return isObject(value) && (values === undefined || membersFit(value, values));
      case 'LISTENER':
        return isObject(value) && callbacksFit(value, values || []);
      case 'PLATFORM_OBJECT':
        return [].concat(values).some((constructor) => value instanceof constructor);
      case 'FILE_REFERENCE':
        return typeof value === 'string' || (isObject(value) && typeof value.fullPath === 'string');
      default: {
        const range = rangeOf(type);
        return isWhole(value, range[0], range[1]);
      }
    }
  }

  function rangeOf(type) {
    switch (type) {
      case 'BYTE':
        return [-128, 127];
      case 'OCTET':
        return [0, 255];
      case 'SHORT':
        return [-32768, 32767];
      case 'UNSIGNED_SHORT':
        return [0, 65535];
      case 'LONG':
        return [-2147483648, 2147483647];
      case 'UNSIGNED_LONG':
        return [0, 4294967295];
      case 'LONG_LONG':
        return [Number.MIN_SAFE_INTEGER, Number.MAX_SAFE_INTEGER];
      case 'UNSIGNED_LONG_LONG':
        return [0, Number.MAX_SAFE_INTEGER];
      default:
        throw new TypeError(`The validator has no type "${type}".`);
    }
  }

  const elementType = (rule) => (typeof rule === 'function' ? 'PLATFORM_OBJECT' : rule);

  function elementsFit(array, rule) {
    const type = elementType(rule);
    for (let index = 0; index < array.length; index += 1) {
      if (!fits(type, array[index], rule)) {
        throw misfit(`element ${index}`, wanted(type, rule), array[index]);
      }
    }
    return true;
  }

  function membersFit(object, rules) {
    for (let index = 0; index < rules.length; index += 1) {
      const { name, type, values, optional, nullable } = rules[index];
      const value = object[name];
      const absent = value === undefined ? optional : value === null && nullable;
      if (!absent && !fits(type, value, values)) {
        throw misfit(`member "${name}"`, wanted(type, values), value);
      }
    }
    return true;
  }

  function callbacksFit(object, names) {
    for (let index = 0; index < names.length; index += 1) {
      const value = object[names[index]];
      if (value !== undefined && value !== null && typeof value !== 'function') {
        throw misfit(`callback "${names[index]}"`, 'a function', value);
      }
    }
    return true;
  }

  // Thrown on the way out of an argument of which only a part is wrong.
  const misfit = (part, wantedText, value) => ({ isMisfit: true, part, wantedText, value });

  function wanted(type, values) {
    switch (type) {
      case 'STRING':
        return 'a string';
      case 'FUNCTION':
        return 'a function';
      case 'BOOLEAN':
        return 'a boolean';
      case 'ENUM':
        return use('describe').oneOf(values);
      case 'DOUBLE':
        return 'a finite number';
      case 'ARRAY':
        return values === undefined
          ? 'an array'
          : `an array whose elements are each ${wanted(elementType(values), values)}`;
      case 'DICTIONARY':
        return 'an object';
      case 'LISTENER':
        return `an object with the functions ${(values || []).join(', ')}`;
      case 'PLATFORM_OBJECT':
        return use('describe').madeBy(values);
      case 'FILE_REFERENCE':
        return 'a path or a file object';
      default:
        return `a whole number from ${rangeOf(type)[0]} to ${rangeOf(type)[1]}`;
    }
  }

  function mismatch(index, rule, { part, wantedText, value }) {
    const WebAPIException = use('exceptions');
    const where = `Argument ${index + 1} "${rule.name}"${part === '' ? '' : `, ${part},`}`;
    const what = part === '' && rule.nullable ? `${wantedText}, or null` : wantedText;
    return new WebAPIException(
      WebAPIException.TYPE_MISMATCH_ERR,
      value === undefined && part === ''
        ? `${where} is missing: it must be ${what}.`
        : `${where} must be ${what}, but is ${use('describe').value(value)}.`
    );
  }

  const wholeMismatch = (index, rule, value) =>
    mismatch(index, rule, misfit('', wanted(rule.type, rule.values), value));

  function checkOne(index, rule, value) {
    let good = false;
    try {
      good = fits(rule.type, value, rule.values);
    } catch (error) {
      throw error.isMisfit ? mismatch(index, rule, error) : error;
    }
    if (!good) {
      throw wholeMismatch(index, rule, value);
    }
    return value;
  }

  function convert(type, value, values) {
    const converter = use('converter');
    switch (type) {
      case 'STRING':
        return converter.toString(value);
      case 'BOOLEAN':
        return converter.toBoolean(value);
      case 'DOUBLE':
        return converter.toDouble(value);
      case 'ENUM':
        return converter.toEnum(value, values);
      case 'BYTE':
        return converter.toByte(value);
      case 'OCTET':
        return converter.toOctet(value);
      case 'SHORT':
        return converter.toShort(value);
      case 'UNSIGNED_SHORT':
        return converter.toUnsignedShort(value);
      case 'LONG':
        return converter.toLong(value);
      case 'UNSIGNED_LONG':
        return converter.toUnsignedLong(value);
      case 'LONG_LONG':
        return converter.toLongLong(value);
      case 'UNSIGNED_LONG_LONG':
        return converter.toUnsignedLongLong(value);
      default:
        return undefined;
    }
  }

  function convertOne(index, rule, value) {
    let converted;
    try {
      converted = convert(rule.type, value, rule.values);
    } catch (error) {
      throw wholeMismatch(index, rule, value);
    }
    return converted === undefined ? checkOne(index, rule, value) : converted;
  }

  // What the checks return; `has` is seldom asked for.
  class Arguments {
    get has() {
      const given = {};
      Object.keys(this).forEach((name) => {
        given[name] = this[name] !== undefined;
      });
      return given;
    }
  }

  function validate(args, rules, take) {
    const result = new Arguments();
    for (let index = 0; index < rules.length; index += 1) {
      const rule = rules[index];
      // Beyond the last argument, what a page has put on Object.prototype would be read.
      const value = index < args.length ? args[index] : undefined;
      if (
        value === undefined ? allows(rule, 'optional') : value === null && allows(rule, 'nullable')
      ) {
        result[rule.name] = value;
      } else if (value === undefined || value === null) {
        throw wholeMismatch(index, rule, value);
      } else {
        result[rule.name] = take(index, rule, value);
      }
    }
    return result;
  }

  return {
    Types: {
      BOOLEAN: 'BOOLEAN',
      BYTE: 'BYTE',
      OCTET: 'OCTET',
      SHORT: 'SHORT',
      UNSIGNED_SHORT: 'UNSIGNED_SHORT',
      LONG: 'LONG',
      UNSIGNED_LONG: 'UNSIGNED_LONG',
      LONG_LONG: 'LONG_LONG',
      UNSIGNED_LONG_LONG: 'UNSIGNED_LONG_LONG',
      DOUBLE: 'DOUBLE',
      STRING: 'STRING',
      ENUM: 'ENUM',
      FUNCTION: 'FUNCTION',
      ARRAY: 'ARRAY',
      DICTIONARY: 'DICTIONARY',
      LISTENER: 'LISTENER',
      PLATFORM_OBJECT: 'PLATFORM_OBJECT',
      FILE_REFERENCE: 'FILE_REFERENCE',
    },

    // Values of another type are refused, never converted. A third argument, which some scripts
    // give, has no meaning here.
    validateArgsStrict: (args, rules) => validate(args, rules, checkOne),

    // Values that can be converted are: "5" passes for a LONG and is 5 in what is returned.
    validateArgs: (args, rules) => validate(args, rules, convertOne),

    isConstructorCall(object, constructor) {
      if (!(object instanceof constructor)) {
        const WebAPIException = use('exceptions');
        throw new WebAPIException(
          WebAPIException.TYPE_MISMATCH_ERR,
          `${constructor.name} is a constructor: call it with new.`
        );
      }
      return true;
    },
  };
}
