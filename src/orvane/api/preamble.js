// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the script stands on: the runtime's facilities, the object that a page sees, and the results
// that are asked for once. The runtime provides extension, exports, xwalk and WebAPIException, and
// evaluates the whole script in strict mode, once for each page.

export const native = new xwalk.utils.NativeManager(extension);
export const validator_ = xwalk.utils.validator;
export const _converter = xwalk.utils.converter;
export const type_ = validator_.Types;
export const validatorType = xwalk.utils.type;

export function OrvaneManager() {}

// Native message name -> the first result that it gave. Lives as long as the page.
export const cache = new Map();
