// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// The argument rules of the platform's web APIs. A method gives the arguments it was called with
// and one rule for each: { name, type, optional, nullable, values }. What is optional may be
// undefined or absent, what is nullable may be null. `values` means, by type: ENUM the allowed
// values; ARRAY the type of its elements; DICTIONARY rules for its members; LISTENER the names of
// its callbacks; PLATFORM_OBJECT a constructor or an array of constructors.
//
// Both checks throw a TypeMismatchError that names the argument, what came and what is wanted. Both
// return an object with one property per rule, and `has`, which tells the arguments that were
// given.
(function makeValidator(use) {
  'use strict';

  const { WebAPIException } = use('exceptions');
  const converter = use('converter');
  const describe = use('describe');

  const isObject = (value) => value !== null && typeof value === 'object';
  const isCallable = (value) => typeof value === 'function';

  function whole(lowest, highest, convert) {
    return {
      wanted: () => `a whole number from ${lowest} to ${highest}`,
      test: (value) => Number.isInteger(value) && value >= lowest && value <= highest,
      convert,
    };
  }

  // Per type: its words, the strict test, and the conversion that the lenient check tries. `test`
  // may throw a Mismatch of its own when only a part of the value is wrong.
  const table = {
    BOOLEAN: {
      wanted: () => 'a boolean',
      test: (value) => typeof value === 'boolean',
      convert: converter.toBoolean,
    },
    BYTE: whole(-128, 127, converter.toByte),
    OCTET: whole(0, 255, converter.toOctet),
    SHORT: whole(-32768, 32767, converter.toShort),
    UNSIGNED_SHORT: whole(0, 65535, converter.toUnsignedShort),
    LONG: whole(-2147483648, 2147483647, converter.toLong),
    UNSIGNED_LONG: whole(0, 4294967295, converter.toUnsignedLong),
    LONG_LONG: whole(Number.MIN_SAFE_INTEGER, Number.MAX_SAFE_INTEGER, converter.toLongLong),
    UNSIGNED_LONG_LONG: whole(0, Number.MAX_SAFE_INTEGER, converter.toUnsignedLongLong),
    DOUBLE: {
      wanted: () => 'a finite number',
      test: (value) => Number.isFinite(value),
      convert: converter.toDouble,
    },
    STRING: {
      wanted: () => 'a string',
      test: (value) => typeof value === 'string',
      convert: converter.toString,
    },
    ENUM: {
      wanted: (values) => `one of ${values.map(describe.literal).join(', ')}`,
      test: (value, values) => values.indexOf(value) !== -1,
      convert: (value, nullable, values) => converter.toEnum(value, values, nullable),
    },
    FUNCTION: { wanted: () => 'a function', test: isCallable },
    ARRAY: {
      wanted: (values) =>
        values === undefined ? 'an array' : `an array whose elements are each ${wantedOf(values)}`,
      test: (value, values) =>
        Array.isArray(value) && (values === undefined || elementsPass(value, values)),
    },
    DICTIONARY: {
      wanted: () => 'an object',
      test: (value, values) =>
        isObject(value) &&
        !Array.isArray(value) &&
        (values === undefined || membersPass(value, values)),
    },
    LISTENER: {
      wanted: (values) => `an object with the functions ${(values || []).join(', ')}`,
      test: (value, values) =>
        isObject(value) && !Array.isArray(value) && callbacksPass(value, values || []),
    },
    PLATFORM_OBJECT: {
      wanted: (values) =>
        `an object made by ${[]
          .concat(values)
          .map((constructor) => constructor.name)
          .join(' or ')}`,
      test: (value, values) =>
        Array.isArray(values)
          ? values.some((constructor) => value instanceof constructor)
          : value instanceof values,
    },
    FILE_REFERENCE: {
      wanted: () => 'a path or a file object',
      test: (value) =>
        typeof value === 'string' || (isObject(value) && typeof value.fullPath === 'string'),
    },
  };

  const Types = {};
  for (const type of Object.keys(table)) {
    Types[type] = type;
  }
  Object.freeze(Types);

  // Says which part of an argument is wrong; checkOne makes an exception of it that names the
  // argument too.
  class Mismatch {
    constructor(part, wanted, value) {
      this.part = part;
      this.wanted = wanted;
      this.value = value;
    }
  }

  // An element rule is a type name, or a constructor.
  const elementType = (rule) => (isCallable(rule) ? 'PLATFORM_OBJECT' : rule);

  function wantedOf(rule) {
    return rowOf(elementType(rule)).wanted(rule);
  }

  function elementsPass(array, rule) {
    const row = rowOf(elementType(rule));
    for (let index = 0; index < array.length; index += 1) {
      if (!row.test(array[index], rule)) {
        throw new Mismatch(`element ${index}`, row.wanted(rule), array[index]);
      }
    }
    return true;
  }

  function membersPass(object, rules) {
    for (const rule of rules) {
      const value = object[rule.name];
      const absent = value === undefined ? rule.optional : value === null && rule.nullable;
      if (!absent && !rowOf(rule.type).test(value, rule.values)) {
        throw new Mismatch(`member "${rule.name}"`, rowOf(rule.type).wanted(rule.values), value);
      }
    }
    return true;
  }

  function callbacksPass(object, names) {
    for (const name of names) {
      if (object[name] !== undefined && object[name] !== null && !isCallable(object[name])) {
        throw new Mismatch(`callback "${name}"`, 'a function', object[name]);
      }
    }
    return true;
  }

  function rowOf(type) {
    const row = table[type];
    if (row === undefined) {
      throw new TypeError(
        `The validator has no type "${type}"; it has ${Object.keys(table).join(', ')}.`
      );
    }
    return row;
  }

  function mismatch(index, rule, part, wanted, value) {
    const where = `Argument ${index + 1} "${rule.name}"${part ? `, ${part},` : ''}`;
    let or = '';
    if (!part && rule.nullable) {
      or = ', or null';
    }
    const text =
      value === undefined && !part
        ? `${where} is missing: it must be ${wanted}${or}.`
        : `${where} must be ${wanted}${or}, but is ${describe(value)}.`;
    return new WebAPIException(WebAPIException.TYPE_MISMATCH_ERR, text);
  }

  function checkOne(index, rule, row, value) {
    let passes = false;
    try {
      passes = row.test(value, rule.values);
    } catch (error) {
      if (error instanceof Mismatch) {
        throw mismatch(index, rule, error.part, error.wanted, error.value);
      }
      throw error;
    }
    if (!passes) {
      throw mismatch(index, rule, '', row.wanted(rule.values), value);
    }
    return value;
  }

  function convertOne(index, rule, row, value) {
    if (row.convert === undefined) {
      return checkOne(index, rule, row, value);
    }
    try {
      return row.convert(value, false, rule.values);
    } catch (error) {
      throw mismatch(index, rule, '', row.wanted(rule.values), value);
    }
  }

  class Arguments {
    get has() {
      const given = {};
      for (const name of Object.keys(this)) {
        given[name] = this[name] !== undefined;
      }
      return given;
    }
  }

  function validate(args, rules, take) {
    const result = new Arguments();
    for (let index = 0; index < rules.length; index += 1) {
      const rule = rules[index];
      const value = args[index];
      const row = rowOf(rule.type);
      if (value === undefined ? rule.optional : value === null && rule.nullable) {
        result[rule.name] = value;
      } else if (value === undefined || value === null) {
        throw mismatch(index, rule, '', row.wanted(rule.values), value);
      } else {
        result[rule.name] = take(index, rule, row, value);
      }
    }
    return result;
  }

  return Object.freeze({
    Types,

    // Values of another type are refused, never converted. A third argument, which some scripts
    // give, has no meaning here.
    validateArgsStrict: (args, rules) => validate(args, rules, checkOne),

    // Values that can be converted are: "5" passes for a LONG and is 5 in what is returned.
    validateArgs: (args, rules) => validate(args, rules, convertOne),

    isConstructorCall(object, constructor) {
      if (!(object instanceof constructor)) {
        throw new WebAPIException(
          WebAPIException.TYPE_MISMATCH_ERR,
          `${constructor.name} is a constructor: call it with new.`
        );
      }
      return true;
    },
  });
});
