// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Messages to the web runtime itself.

import { stringify, wellFormed } from './builtins.js';

const unknownError = 9999;

// The three functions of an extension's native side.
export function runtimeCalls(caller) {
  const call = (kind, uri, text) => {
    const message = { type: 'runtime', kind, uri: wellFormed(uri), text: wellFormed(text) };
    return caller.call(message, () => `The runtime did not answer ${message.uri}`);
  };
  return {
    sendRuntimeMessage: (uri, text) => call('plain', uri, text),
    sendRuntimeSyncMessage: (uri, text) => call('sync', uri, text),
    sendRuntimeAsyncMessage(uri, text, callback) {
      if (typeof callback !== 'function') {
        throw new TypeError('The callback of a runtime message must be a function.');
      }
      const message = {
        type: 'runtime',
        kind: 'async',
        uri: wellFormed(uri),
        text: wellFormed(text),
      };
      caller.ask(
        message,
        () => `The runtime did not answer ${message.uri}`,
        (result, error) => callback(error === undefined ? result : failedReply(error))
      );
    },
  };
}

function failedReply(message) {
  return stringify({
    status: 'error',
    error: { code: unknownError, name: 'UnknownError', message },
  });
}
