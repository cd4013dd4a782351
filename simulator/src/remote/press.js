// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A press of a key, from whatever asked for it.

import { ask } from '../api/session.js';
import { signal } from '../view.js';

/** The symbol of the key that went down last, for the picture of the remote control. */
export const pressed = signal(null);

const litMs = 140;
let timer = 0;

/** @param {string} name the platform's symbol @param {{long?: boolean}} [options] */
export function pressKey(name, { long = false } = {}) {
  pressed.value = name;
  clearTimeout(timer);
  timer = setTimeout(() => (pressed.value = null), litMs);
  return ask('keys.press', long ? { name, long: true } : { name });
}
