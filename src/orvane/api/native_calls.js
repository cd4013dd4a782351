// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the methods share when they speak to the native side and to the runtime.

import { cache, native, type_ } from './preamble.js';

// Hands back a reply of the native side, or throws the error that it carries, unchanged.
export function succeeded(ret) {
  if (native.isFailure(ret)) {
    throw native.getErrorObject(ret);
  }
  return ret;
}

// The result of a native message without arguments that never changes: asked for once per page.
// A failure is not kept, so the next call asks again.
export function callSync(api) {
  if (cache.has(api)) {
    console.log('[Orvane] ' + api + ' cache: ' + cache.get(api));
    return cache.get(api);
  }
  const result = native.getResultObject(succeeded(native.callSync(api)));
  console.log('[Orvane] ' + api + ' : ' + result);
  cache.set(api, result);
  return result;
}

// The error of a method whose runtime message was refused.
export function operationError(method) {
  return new WebAPIException(
    WebAPIException.QM_UNKNOWN_ERR,
    'An error occurred in the operation of ' + method + '.'
  );
}

// The validator's rule for a callback that a page may leave out.
export function optionalCallback(name) {
  return { name, type: type_.FUNCTION, optional: true, nullable: true };
}

// The receiver of a posted reply that carries no result. A failure reaches the page from a timer, a
// success at once: pages rely on the order that this gives.
export function replyReceiver(method, onsuccess, onerror) {
  return (ret) => {
    if (native.isFailure(ret)) {
      setTimeout(() => {
        console.log('[Orvane] ' + method + ' errorCallback');
        native.callIfPossible(onerror, native.getErrorObject(ret));
      }, 0);
      return;
    }
    console.log('[Orvane] ' + method + ' successCallback');
    native.callIfPossible(onsuccess, null);
  };
}
