// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// The runtime's script side. The build puts the other files of this folder where the marks stand,
// so that a page evaluates one script; each file is one function that makes its part: those with a
// mark of their own when the page starts, the others when something first uses them.
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
/* global partPublish, partTimers -- marks of publish.js and timers.js */
(function startPage(bridge) {
  'use strict';

  const page = globalThis;

  // The engine's own, taken before a page can put something else in their place: what decides
  // whether a message goes out, and what it says, uses these.
  const builtins = {
    call: Function.prototype.call,
    defineProperty: Object.defineProperty,
    getValues: Object.values,
    hasOwn: Object.hasOwn,
    isArray: Array.isArray,
    isFinite: Number.isFinite,
    isInteger: Number.isInteger,
    parse: JSON.parse,
    stringify: JSON.stringify,
    toNumber: Number,
  };

  // `parts` has no prototype: what a page puts on Object.prototype is no part.
  function makeUse(parts) {
    return function use(name) {
      if (parts[name] === undefined) {
        parts[name] = make(name, use);
      }
      return parts[name];
    };
  }

  // The parts of the runtime and of the extensions' scripts. What a page reaches through its own
  // `xwalk` are others, which it may change as it likes; they throw the same exceptions.
  const use = makeUse({ __proto__: null });

  function makePageXwalk() {
    return makeUse({ __proto__: null, exceptions: use('exceptions') })('xwalk');
  }

  // eslint-disable-next-line no-shadow, no-unused-vars -- parts call the one that they belong to
  function make(name, use) {
    switch (name) {
      // @parts
      default:
        throw new TypeError(`The runtime has no part "${name}".`);
    }
  }

  // Made on first touch, and a plain property from then on.
  function defineLazily(name, makePart) {
    const define = (value) =>
      builtins.defineProperty(page, name, {
        __proto__: null,
        value,
        writable: true,
        configurable: true,
      });
    builtins.defineProperty(page, name, {
      get() {
        const value = makePart();
        define(value);
        return value;
      },
      set: define,
      configurable: true,
    });
  }

  defineLazily('xwalk', makePageXwalk);
  defineLazily('widget', () => use('widget'));
  defineLazily('WebAPIException', () => use('exceptions'));
  defineLazily('WebAPIError', () => use('exceptions'));
  if (bridge.addTimer) {
    defineLazily('console', () => use('console'));
    partTimers(use, bridge, builtins);
  }
  const extensions = bridge.extensions();
  if (extensions.length > 0) {
    partPublish(use, bridge, builtins)(page, extensions);
  }
});
