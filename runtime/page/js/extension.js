// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

import { call, defineProperty } from './builtins.js';

// The `extension` object of a script, over its native side: an object with these functions, and
// evaluateScript(), which returns the function that extension_wrapper.js makes of the script text.
export function makeExtensionFactory() {
  return function makeExtension(native) {
    // Reading a function of `native` costs a look-up in the engine, so the one that is called often
    // is kept.
    const { sendSyncMessage } = native;
    // Its own, or a page that replaces the inherited one would be handed `native`.
    defineProperty(sendSyncMessage, 'call', { __proto__: null, value: call });
    return {
      postMessage(message) {
        native.postMessage(message);
      },
      setMessageListener(listener) {
        native.setMessageListener(listener);
      },
      sendRuntimeMessage(uri, text) {
        return native.sendRuntimeMessage(uri, text);
      },
      sendRuntimeSyncMessage(uri, text) {
        return native.sendRuntimeSyncMessage(uri, text);
      },
      sendRuntimeAsyncMessage(uri, text, callback) {
        return native.sendRuntimeAsyncMessage(uri, text, callback);
      },
      internal: {
        sendSyncMessage(text) {
          return sendSyncMessage.call(native, text);
        },
        // The number of posted replies that the script still waits for.
        setPendingReplies(count) {
          native.setPendingReplies(count);
        },
      },
    };
  };
}
