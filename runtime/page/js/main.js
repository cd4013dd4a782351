// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

import { defineProperty } from './builtins.js';
import { makeUse } from './parts.js';
import { makePublish } from './publish.js';
import { makeTimers } from './timers.js';

// Made on first touch, and a plain property from then on.
function defineLazily(name, makePart) {
  const page = globalThis;
  const define = (value) =>
    defineProperty(page, name, { __proto__: null, value, writable: true, configurable: true });
  defineProperty(page, name, {
    get() {
      const value = makePart();
      define(value);
      return value;
    },
    set: define,
    configurable: true,
  });
}

// Makes the runtime's script side in a page, before the page's first own script.
//
// Starting a page and reaching an extension are to cost little beside the engine's own context, so
// parts do next to nothing until they are called: what counts is the number of functions that run
// for the first time in the page, the number of object shapes, and which of the engine's lazy
// builtins are touched (Map, iterators, private fields and Object.freeze are dear). So each module
// is one function that makes its part, and few of them run at the start.
//
// `host` is what the page's host does for it, in process or in a browser:
//   extensions()          what a page may touch: [{ name, entryPoints }]
//   createInstance(name)  makes the instance for this page; returns its native side, see
//                         extension.js, or null
//   hasPrivilege(uri), moveWindow(x, y), setQuarterPosition(position), widgetInfo()
//   addTimer, removeTimer, writeConsole, reportError: only in process, where no browser has them
export function startPage(host) {
  // The parts of the runtime and of the extensions' scripts. What a page reaches through its own
  // `xwalk` are others, which it may change as it likes; they throw the same exceptions.
  const use = makeUse(host, { __proto__: null });
  const makePageXwalk = () =>
    makeUse(host, { __proto__: null, exceptions: use('exceptions') })('xwalk');

  defineLazily('xwalk', makePageXwalk);
  defineLazily('widget', () => use('widget'));
  defineLazily('WebAPIException', () => use('exceptions'));
  defineLazily('WebAPIError', () => use('exceptions'));
  if (host.addTimer) {
    defineLazily('console', () => use('console'));
    makeTimers(use, host);
  }
  const extensions = host.extensions();
  if (extensions.length > 0) {
    makePublish(use, host)(globalThis, extensions);
  }
}
