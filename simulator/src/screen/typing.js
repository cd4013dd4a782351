// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the on-screen keyboard types, and the word that is being typed: a recommended word completes
// it.

import { ask } from '../api/session.js';

let word = '';

export function startTyping() {
  word = '';
}

export function typeText(text) {
  word = /\s$/.test(text) ? '' : word + text;
  ask('ime.input', { op: 'text', text });
}

/** @param {'backspace' | 'enter' | 'clear'} op */
export function typeKey(op) {
  word = op === 'backspace' ? word.slice(0, -1) : '';
  ask('ime.input', { op });
}

/** Types the word, in the place of its own beginning if that was typed just now. */
export function typeWord(recommended) {
  const begun = recommended.toLowerCase().startsWith(word.toLowerCase()) ? word.length : 0;
  for (let count = 0; count < begun; ++count) {
    typeKey('backspace');
  }
  word = '';
  typeText(recommended);
}
