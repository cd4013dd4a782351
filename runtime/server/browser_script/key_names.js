// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Keys of the remote control as a page's key events name them. The set knows a key by its symbol.

import { mandatoryKeys } from '../../../keys/keys.js';

// Those that a keyboard has too. A browser's events have the page's name as key and as code.
const ofKeyboard = mandatoryKeys.filter(({ symbol }) => !symbol.startsWith('XF86'));

const named = {
  ...Object.fromEntries(ofKeyboard.map(({ name, symbol }) => [symbol, { key: name, code: name }])),
  minus: { key: '-', code: 'Minus', text: '-' },
};

// The members of the event; `text` is what the key types, if anything. Every key beyond those of a
// keyboard has its symbol as its name, and no code.
export function eventNames(symbol) {
  if (/^[0-9]$/.test(symbol)) {
    return { key: symbol, code: `Digit${symbol}`, text: symbol };
  }
  return Object.hasOwn(named, symbol) ? named[symbol] : { key: symbol, code: '' };
}

// Keys of a keyboard that stand for keys of the remote control, by the event's code.
const native = {
  ...Object.fromEntries(ofKeyboard.map(({ name, symbol }) => [name, symbol])),
  NumpadEnter: 'Return',
};

const translated = {
  F1: 'XF86Red',
  F2: 'XF86Green',
  F3: 'XF86Yellow',
  F4: 'XF86Blue',
  Minus: 'minus',
};

// The mandatory key that a page receives from the browser itself, undefined for any other.
export const nativeSymbol = (code) => (Object.hasOwn(native, code) ? native[code] : undefined);

// The key of the remote control that the physical key is pressed in place of, undefined for none.
// `editing`: keys that edit text stay with the browser while a person types.
export function remoteSymbol(code, editing) {
  if (/^F[1-4]$/.test(code)) {
    return translated[code];
  }
  if (editing) {
    return undefined;
  }
  if (code === 'Backspace') {
    return 'XF86Back';
  }
  const digit = /^(?:Digit|Numpad)([0-9])$/.exec(code);
  if (digit) {
    return digit[1];
  }
  return Object.hasOwn(translated, code) ? translated[code] : undefined;
}
