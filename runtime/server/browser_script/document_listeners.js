// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Listeners of the window and the document. document.open() takes every listener off both, so they
// are put back when the document's content has been replaced.

import { addListener } from './builtins.js';

const wanted = [];

function listenAgain() {
  for (const [target, type, listener] of wanted) {
    // Adding a listener that is there already changes nothing.
    addListener(target, type, listener, { capture: true, passive: false });
  }
}

let observer = null;

// Listens in the capturing phase, before any listener of the page.
export function listen(target, type, listener) {
  wanted.push([target, type, listener]);
  addListener(target, type, listener, { capture: true, passive: false });
  if (observer === null) {
    observer = new MutationObserver(listenAgain);
    observer.observe(document, { childList: true });
  }
}
