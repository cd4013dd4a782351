// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Keys of the remote control that the set delivers to the page: key events on the focused element,
// and then what a browser would do for the key. Script cannot make a browser do that by itself.

import { dispatch } from './builtins.js';
import { actOnKey } from './default_actions.js';
import { focusedElement } from './frames.js';
import { eventNames } from './key_names.js';

// The event in the realm of the element, so that the page's `instanceof` holds.
function makeEvent(type, element, keyCode, charCode, { key, code }, repeat) {
  const view = element.ownerDocument.defaultView;
  const event = new view.KeyboardEvent(type, {
    key,
    code,
    keyCode,
    charCode,
    which: keyCode,
    repeat,
    view,
    bubbles: true,
    cancelable: true,
    composed: true,
  });
  // Where the browser does not take these members from the constructor.
  for (const [name, value] of Object.entries({ keyCode, which: keyCode, charCode })) {
    if (event[name] !== value) {
      Object.defineProperty(event, name, { __proto__: null, value });
    }
  }
  return event;
}

function keyDown({ key_name: symbol, key_code: keyCode, repeat = false }) {
  const names = eventNames(symbol);
  const element = focusedElement();
  const proceed = dispatch(element, makeEvent('keydown', element, keyCode, 0, names, repeat));
  if (!proceed) {
    return;
  }
  // The page may have moved the focus: what follows goes to where it is now.
  const target = focusedElement();
  const typed = names.key === 'Enter' ? '\r' : names.text;
  if (typed !== undefined) {
    const unit = typed.charCodeAt(0);
    if (!dispatch(target, makeEvent('keypress', target, unit, unit, names, repeat))) {
      return;
    }
  }
  actOnKey(names, target);
}

function keyUp({ key_name: symbol, key_code: keyCode }) {
  const element = focusedElement();
  dispatch(element, makeEvent('keyup', element, keyCode, 0, eventNames(symbol), false));
}

// A message { key_name, key_code, phase: "down" | "up" | "press", repeat }.
export function pressKey(frame) {
  if (frame.phase !== 'up') {
    keyDown(frame);
  }
  if (frame.phase !== 'down') {
    keyUp(frame);
  }
}
