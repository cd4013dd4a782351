// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Timers and microtasks for a page that has no browser around it.
(function makeTimers(use, bridge) {
  'use strict';

  const page = globalThis;

  function requireFunction(name, value) {
    if (typeof value !== 'function') {
      throw new TypeError(`${name} needs a function, but got ${use('describe').value(value)}.`);
    }
  }

  function start(name, handler, delay, args, repeats) {
    requireFunction(name, handler);
    const run = args.length === 0 ? handler : () => handler(...args);
    // A browser takes the delay as a 32-bit integer too: what is no number, and what is too large,
    // counts as 0.
    return bridge.addTimer(run, delay | 0, repeats);
  }

  page.window = page;
  page.self = page;
  page.setTimeout = function setTimeout(handler, delay, ...args) {
    return start('setTimeout', handler, delay, args, false);
  };
  page.setInterval = function setInterval(handler, delay, ...args) {
    return start('setInterval', handler, delay, args, true);
  };
  page.clearTimeout = function clearTimeout(id) {
    bridge.removeTimer(id | 0);
  };
  page.clearInterval = function clearInterval(id) {
    bridge.removeTimer(id | 0);
  };
  page.queueMicrotask = function queueMicrotask(callback) {
    requireFunction('queueMicrotask', callback);
    Promise.resolve().then(() => {
      try {
        callback();
      } catch (error) {
        bridge.reportError(error);
      }
    });
  };
  return page;
});
