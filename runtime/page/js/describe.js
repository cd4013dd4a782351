// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Words for error texts.
export function makeDescribe() {
  const longestText = 60;

  const literal = (value) => (typeof value === 'string' ? JSON.stringify(value) : String(value));

  return {
    // `the string "abc"`, `an array`, `null`.
    value(value) {
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
    },

    oneOf: (values) => `one of ${values.map(literal).join(', ')}`,

    // `constructors` is one, or an array of them.
    madeBy: (constructors) =>
      `an object made by ${[]
        .concat(constructors)
        .map((constructor) => constructor.name)
        .join(' or ')}`,
  };
}
