// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Messages to the web runtime itself.

import { stringify, wellFormed } from './builtins.js';

const unknownError = 9999;

// The three functions of an extension's native side.
export function runtimeCalls(caller) {
  const call = (kind, uri, text) => {
    const head = { type: 'runtime', kind, uri: wellFormed(uri) };
    return caller.call(head, wellFormed(text), () => `The runtime did not answer ${head.uri}`);
  };
  return {
    sendRuntimeMessage: (uri, text) => call('plain', uri, text),
    sendRuntimeSyncMessage: (uri, text) => call('sync', uri, text),
    sendRuntimeAsyncMessage(uri, text, callback) {
      if (typeof callback !== 'function') {
        throw new TypeError('The callback of a runtime message must be a function.');
      }
      const head = { type: 'runtime', kind: 'async', uri: wellFormed(uri) };
      caller.ask(
        head,
        wellFormed(text),
        () => `The runtime did not answer ${head.uri}`,
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
