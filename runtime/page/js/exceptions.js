// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// WebAPIException, which methods throw, and WebAPIError, which error callbacks receive: `code`,
// `name` and `message`.
(function makeExceptions() {
  'use strict';

  // Constant, code, name. The first row of a code or name is the one that is found by it.
  const rows = [
    ['INDEX_SIZE_ERR', 1, 'IndexSizeError'],
    ['INVALID_CHARACTER_ERR', 5, 'InvalidCharacterError'],
    ['NOT_FOUND_ERR', 8, 'NotFoundError'],
    ['NOT_SUPPORTED_ERR', 9, 'NotSupportedError'],
    ['INVALID_STATE_ERR', 11, 'InvalidStateError'],
    ['SYNTAX_ERR', 12, 'SyntaxError'],
    ['INVALID_MODIFICATION_ERR', 13, 'InvalidModificationError'],
    ['INVALID_ACCESS_ERR', 15, 'InvalidAccessError'],
    ['TYPE_MISMATCH_ERR', 17, 'TypeMismatchError'],
    ['SECURITY_ERR', 18, 'SecurityError'],
    ['NETWORK_ERR', 19, 'NetworkError'],
    ['ABORT_ERR', 20, 'AbortError'],
    ['INVALID_VALUES_ERR', 22, 'InvalidValuesError'],
    ['TIMEOUT_ERR', 23, 'TimeoutError'],
    ['IO_ERR', 100, 'IOError'],
    ['SERVICE_NOT_AVAILABLE_ERR', 111, 'ServiceNotAvailableError'],
    ['UNKNOWN_ERR', 9999, 'UnknownError'],
    ['QM_INVALID_VALUES_ERR', 22, 'InvalidValuesError'],
    ['QM_UNKNOWN_ERR', 9999, 'UnknownError'],
  ];
  const unknown = rows.find((row) => row[1] === 9999);

  function rowOf(codeOrName) {
    const column = typeof codeOrName === 'number' ? 1 : 2;
    return rows.find((row) => row[column] === codeOrName);
  }

  // What was given, as [code, name, message]. The forms: (code, message), (name, message),
  // (message) and an object with any of the three, whose own values win over the table's.
  function read(first, message) {
    if (first !== null && typeof first === 'object') {
      const row = rowOf(first.code) || rowOf(first.name) || unknown;
      const code = typeof first.code === 'number' ? first.code : row[1];
      return [code, first.name === undefined ? row[2] : String(first.name), first.message];
    }
    if (typeof first === 'number') {
      return [first, (rowOf(first) || unknown)[2], message];
    }
    const row = rowOf(first);
    if (row === undefined && message === undefined) {
      return [unknown[1], unknown[2], first];
    }
    return row === undefined ? [unknown[1], String(first), message] : [row[1], row[2], message];
  }

  class WebAPIError extends Error {
    constructor(first, text) {
      const [code, name, message] = read(first, text);
      super(message === undefined || message === null ? '' : String(message));
      Object.defineProperties(this, {
        code: { value: code, enumerable: true },
        name: { value: name, enumerable: true },
        message: { value: this.message, enumerable: true },
      });
    }
  }

  class WebAPIException extends WebAPIError {}

  for (const [constant, code] of rows) {
    Object.defineProperty(WebAPIError, constant, { value: code, enumerable: true });
  }
  return { WebAPIError, WebAPIException };
});
