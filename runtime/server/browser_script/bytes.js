// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Bytes of messages, which travel as base64: frames are JSON.

import { callFunction, fromBase64, isView, lengthOfBuffer } from './builtins.js';
import { textFromUnits, toBase64 } from './builtins.js';

// What one String.fromCharCode call takes without trouble for any engine's stack.
const bytesPerCall = 8 * 1024;

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

export function encodeBytes(bytes) {
  let units = '';
  for (let start = 0; start < bytes.length; start += bytesPerCall) {
    units += callFunction(textFromUnits, null, bytes.subarray(start, start + bytesPerCall));
  }
  return toBase64(units);
}

export function decodeBytes(text) {
  const units = fromBase64(text);
  const bytes = new Uint8Array(units.length);
  for (let index = 0; index < units.length; index += 1) {
    bytes[index] = units.charCodeAt(index);
  }
  return bytes.buffer;
}
