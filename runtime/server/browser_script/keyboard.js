// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The physical keyboard in place of the remote control. Arrows and Enter reach the page from the
// browser itself, and are only reported. Backspace, digits and F1 to F4 (the colour keys) take the
// way of the remote control: the page receives them when the set delivers them, by its rules.

import { listen } from './document_listeners.js';
import { focusedElement, isEditable } from './frames.js';
import { nativeSymbol, remoteSymbol } from './key_names.js';

function swallow(event) {
  event.preventDefault();
  event.stopImmediatePropagation();
}

// The remote key that the browser's key event stands for, undefined if it is left alone.
function remoteKeyOf(event) {
  if (!event.isTrusted || event.ctrlKey || event.altKey || event.metaKey || event.isComposing) {
    return undefined;
  }
  return remoteSymbol(event.code, isEditable(focusedElement()));
}

export function watchKeyboard(report) {
  listen(window, 'keydown', (event) => {
    const remote = remoteKeyOf(event);
    if (remote !== undefined) {
      swallow(event);
      if (!event.repeat) {
        report({ type: 'keyPress', key_name: remote, long: false });
      }
      return;
    }
    const symbol = nativeSymbol(event.code);
    if (event.isTrusted && symbol !== undefined && !event.repeat) {
      report({ type: 'keyReport', key_name: symbol });
    }
  });
  for (const type of ['keypress', 'keyup']) {
    listen(window, type, (event) => {
      if (remoteKeyOf(event) !== undefined) {
        swallow(event);
      }
    });
  }
}
