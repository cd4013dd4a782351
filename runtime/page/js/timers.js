// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Timers and microtasks for a page that has no browser around it.
(function makeTimers(use, bridge) {
  'use strict';

  function requireFunction(name, value) {
    if (typeof value !== 'function') {
      throw new TypeError(`${name} needs a function, but got ${use('describe')(value)}.`);
    }
  }

  function start(name, handler, delay, args, repeats) {
    requireFunction(name, handler);
    const run = args.length === 0 ? handler : () => handler(...args);
    // A browser takes the delay as a 32-bit integer too: what is no number, and what is too large,
    // counts as 0.
    return bridge.addTimer(run, delay | 0, repeats);
  }

  function define(name, value) {
    Object.defineProperty(globalThis, name, {
      value,
      writable: true,
      enumerable: true,
      configurable: true,
    });
  }

  define('setTimeout', function setTimeout(handler, delay, ...args) {
    return start('setTimeout', handler, delay, args, false);
  });
  define('setInterval', function setInterval(handler, delay, ...args) {
    return start('setInterval', handler, delay, args, true);
  });
  define('clearTimeout', function clearTimeout(id) {
    bridge.removeTimer(id | 0);
  });
  define('clearInterval', function clearInterval(id) {
    bridge.removeTimer(id | 0);
  });
  define('queueMicrotask', function queueMicrotask(callback) {
    requireFunction('queueMicrotask', callback);
    Promise.resolve().then(() => {
      try {
        callback();
      } catch (error) {
        bridge.reportError(error, '');
      }
    });
  });
});
