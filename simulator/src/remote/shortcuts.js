// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The keyboard as a remote control. It is one while the screen, the remote control or nothing has
// the keyboard's focus; anywhere else keys do what they do in any page.

import { pressKey } from './press.js';
import { shortcuts } from './shortcut_table.js';

const symbols = new Map(shortcuts.map(([typed, symbol]) => [typed.toLowerCase(), symbol]));
const hints = new Map(shortcuts.map(([, symbol, shown]) => [symbol, shown]));
const repeating = new Set(['Up', 'Down', 'Left', 'Right']);
const repeatMs = 120;
let lastRepeat = 0;

/** How the shortcut of a key is written, or undefined. */
export function shortcutOf(symbol) {
  return hints.get(symbol);
}

function belongsToTheSet(target) {
  return target === document.body || target.closest('[data-keys="set"]') !== null;
}

/** Keys that a control under the focus needs for itself. */
function neededByControl(event) {
  const control = event.target.closest('button, a, summary, input, select, textarea');
  return Boolean(control) && (event.key === 'Enter' || event.key === ' ' || isField(control));
}

function isField(control) {
  return ['INPUT', 'SELECT', 'TEXTAREA'].includes(control.tagName);
}

function tooSoon(event, symbol) {
  if (!event.repeat) {
    return false;
  }
  if (!repeating.has(symbol) || event.timeStamp - lastRepeat < repeatMs) {
    return true;
  }
  lastRepeat = event.timeStamp;
  return false;
}

/** With Shift the press is a long one. Keys with Ctrl, Alt or Meta are the browser's. */
export function onShortcut(event) {
  if (event.defaultPrevented || event.ctrlKey || event.altKey || event.metaKey) {
    return;
  }
  const symbol = symbols.get(event.key.toLowerCase());
  if (!symbol || !belongsToTheSet(event.target) || neededByControl(event)) {
    return;
  }
  event.preventDefault();
  if (!tooSoon(event, symbol)) {
    pressKey(symbol, { long: event.shiftKey });
  }
}
