// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Frames whose document stands in their srcdoc attribute. No server sends it, so the page puts the
// runtime's script into it: a browser loads such a document in a later task, and what an observer
// of changes does comes before that, however the frame was inserted.

import { getAttribute, observeTree, setAttribute } from './builtins.js';

const doctype = /^\s*<!doctype[^>]*>/i;

// Whether its document is of this origin, and may run scripts.
function isOwn(frame) {
  const sandbox = getAttribute(frame, 'sandbox');
  if (sandbox === null) {
    return true;
  }
  const allowed = sandbox.toLowerCase().split(/\s+/);
  return allowed.includes('allow-scripts') && allowed.includes('allow-same-origin');
}

function framesIn(nodes) {
  const found = [];
  for (const node of nodes) {
    if (node.nodeType === Node.ELEMENT_NODE) {
      if (node.localName === 'iframe') {
        found.push(node);
      }
      if (node.firstElementChild !== null) {
        found.push(...node.getElementsByTagName('iframe'));
      }
    }
  }
  return found;
}

export function watchSrcdocFrames(scriptAddress) {
  const element = `<script src="${scriptAddress}"></script>`;

  function give(frame) {
    const text = getAttribute(frame, 'srcdoc');
    if (text === null || text.includes(element) || !isOwn(frame)) {
      return;
    }
    const head = doctype.exec(text)?.[0] ?? '';
    setAttribute(frame, 'srcdoc', head + element + text.slice(head.length));
  }

  observeTree(document, { childList: true, subtree: true, attributeFilter: ['srcdoc'] }, (list) => {
    for (const { type, target, addedNodes } of list) {
      if (type === 'childList') {
        framesIn(addedNodes).forEach(give);
      } else if (target.localName === 'iframe') {
        give(target);
      }
    }
  });
}
