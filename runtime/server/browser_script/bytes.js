// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What a page gives as a message of bytes.

import { isView, lengthOfBuffer } from './builtins.js';

// The bytes of an ArrayBuffer, of whatever frame, or of a view of one; null for anything else.
export function bytesOf(value) {
  if (isView(value)) {
    return new Uint8Array(value.buffer, value.byteOffset, value.byteLength);
  }
  try {
    lengthOfBuffer(value); // throws for another object
  } catch (error) {
    return null;
  }
  return new Uint8Array(value);
}
