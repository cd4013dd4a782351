// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// What methods throw and what error callbacks receive: `code`, `name` and `message`. One class
// bears both of the platform's names, WebAPIException and WebAPIError.
export function makeExceptions() {
  const unknownCode = 9999;
  const unknownName = 'UnknownError';

  // Code and name, by turns.
  const known = () => [
    [1, 'IndexSizeError'],
    [5, 'InvalidCharacterError'],
    [8, 'NotFoundError'],
    [9, 'NotSupportedError'],
    [11, 'InvalidStateError'],
    [12, 'SyntaxError'],
    [13, 'InvalidModificationError'],
    [15, 'InvalidAccessError'],
    [17, 'TypeMismatchError'],
    [18, 'SecurityError'],
    [19, 'NetworkError'],
    [20, 'AbortError'],
    [22, 'InvalidValuesError'],
    [23, 'TimeoutError'],
    [100, 'IOError'],
    [111, 'ServiceNotAvailableError'],
    [unknownCode, unknownName],
  ];

  function nameOf(code) {
    const row = known().find((candidate) => candidate[0] === code);
    return row === undefined ? unknownName : row[1];
  }

  function codeOf(name) {
    const row = known().find((candidate) => candidate[1] === name);
    return row === undefined ? unknownCode : row[0];
  }

  // What the constructor was given, in one form. Of an object, what it has itself counts.
  function read(first, message) {
    if (first !== null && typeof first === 'object') {
      const { code, name } = first;
      return {
        code: typeof code === 'number' ? code : codeOf(name),
        name: name === undefined ? nameOf(code) : String(name),
        message: first.message,
      };
    }
    if (typeof first === 'number') {
      return { code: first, name: nameOf(first), message };
    }
    return message === undefined && codeOf(first) === unknownCode && first !== unknownName
      ? { code: unknownCode, name: unknownName, message: first }
      : { code: codeOf(first), name: String(first), message };
  }

  return class WebAPIException extends Error {
    static INDEX_SIZE_ERR = 1;
    static INVALID_CHARACTER_ERR = 5;
    static NOT_FOUND_ERR = 8;
    static NOT_SUPPORTED_ERR = 9;
    static INVALID_STATE_ERR = 11;
    static SYNTAX_ERR = 12;
    static INVALID_MODIFICATION_ERR = 13;
    static INVALID_ACCESS_ERR = 15;
    static TYPE_MISMATCH_ERR = 17;
    static SECURITY_ERR = 18;
    static NETWORK_ERR = 19;
    static ABORT_ERR = 20;
    static INVALID_VALUES_ERR = 22;
    static QM_INVALID_VALUES_ERR = 22;
    static TIMEOUT_ERR = 23;
    static IO_ERR = 100;
    static SERVICE_NOT_AVAILABLE_ERR = 111;
    static UNKNOWN_ERR = 9999;
    static QM_UNKNOWN_ERR = 9999;

    // (code, message), (name, message), (message), or an object with any of the three.
    constructor(first, text) {
      const { code, name, message } = read(first, text);
      super(message === undefined || message === null ? '' : String(message));
      const fixed = (value) => ({ value, enumerable: true, writable: false, configurable: false });
      Object.defineProperties(this, {
        code: fixed(code),
        name: fixed(name),
        message: fixed(this.message),
      });
    }
  };
}
