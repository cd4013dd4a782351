// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// The runtime's script side. The build puts the other files of this folder where the mark stands,
// so that a page evaluates one script; each file is one function that makes its part when something
// first uses it.
//
// Starting a page and reaching an extension are to cost little beside the engine's own context, so
// parts do next to nothing until they are called: what counts is the number of functions that run
// for the first time in the page, the number of object shapes, and which of the engine's lazy
// builtins are touched (Map, iterators, private fields and Object.freeze are dear).
//
// `bridge` is what the home of the page supplies, in process or in a browser:
//   extensions()          what a page may touch: [{ name, entryPoints }]
//   createInstance(name)  makes the instance for this page; returns its native side, see
//                         extension.js, or null
//   hasPrivilege(uri), moveWindow(x, y), setQuarterPosition(position), widgetInfo()
//   addTimer, removeTimer, writeConsole, reportError: only in process, where no browser has them
(function startPage(bridge) {
  'use strict';

  const page = globalThis;
  const parts = {};

  function use(name) {
    if (parts[name] === undefined) {
      parts[name] = make(name);
    }
    return parts[name];
  }

  function make(name) {
    switch (name) {
      // @parts
      default:
        throw new TypeError(`The runtime has no part "${name}".`);
    }
  }

  // Made on first touch, and a plain property from then on.
  function defineLazily(name, part) {
    const define = (value) =>
      Object.defineProperty(page, name, { value, writable: true, configurable: true });
    Object.defineProperty(page, name, {
      get() {
        const value = use(part);
        define(value);
        return value;
      },
      set: define,
      configurable: true,
    });
  }

  defineLazily('xwalk', 'xwalk');
  defineLazily('widget', 'widget');
  defineLazily('WebAPIException', 'exceptions');
  defineLazily('WebAPIError', 'exceptions');
  if (bridge.addTimer) {
    defineLazily('console', 'console');
    use('timers');
  }
  const extensions = bridge.extensions();
  if (extensions.length > 0) {
    use('publish')(page, extensions);
  }
});
