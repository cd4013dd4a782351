// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Tells the server what the page is and whether a person is typing in it.

import { addListener, startTimer, stringify } from './builtins.js';
import { listen } from './document_listeners.js';
import { focusedElement, isEditable, isOnFocusPath, isTopPage } from './frames.js';

// Several events of one moment make one report.
const settleMs = 20;
// What a person reads of an address or a title; a page may have a megabyte there.
const longestText = 2048;

function readState() {
  return {
    type: 'state',
    href: location.href.slice(0, longestText),
    title: document.title.slice(0, longestText),
    focused: document.hasFocus(),
    visible: document.visibilityState === 'visible',
    top: isTopPage(),
    editing: isEditable(focusedElement()) && isOnFocusPath(),
    isolated: globalThis.crossOriginIsolated === true,
  };
}

export function watchPageState(report) {
  let last = '';
  let scheduled = false;

  function tell() {
    scheduled = false;
    const state = readState();
    const text = stringify(state);
    if (text !== last) {
      last = text;
      report(state);
    }
  }

  function tellSoon() {
    if (!scheduled) {
      scheduled = true;
      startTimer(tell, settleMs);
    }
  }

  for (const type of ['DOMContentLoaded', 'visibilitychange', 'focusin', 'focusout']) {
    listen(document, type, tellSoon);
  }
  for (const type of ['load', 'focus', 'blur', 'hashchange', 'popstate', 'pageshow']) {
    listen(window, type, tellSoon);
  }
  // history.pushState() tells nobody else.
  if (globalThis.navigation) {
    addListener(globalThis.navigation, 'currententrychange', tellSoon);
  }
  listen(document, 'DOMContentLoaded', () => watchTitle(tellSoon));
  tell();
}

function watchTitle(changed) {
  if (document.head) {
    new MutationObserver(changed).observe(document.head, {
      childList: true,
      characterData: true,
      subtree: true,
    });
  }
}
