// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The engine's own functions, taken before a page can put something else in their place: what
// decides whether a message goes out, and what it says, uses these.

export const { call } = Function.prototype;
export const { defineProperty, hasOwn, values: getValues } = Object;
export const { isArray } = Array;
export const { isFinite, isInteger } = Number;
export const { parse, stringify } = JSON;
export const toNumber = Number;
