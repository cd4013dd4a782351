// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Timers and microtasks for a page that has no browser around it.
export function makeTimers(use, host) {
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
    return host.addTimer(run, delay | 0, repeats);
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
    host.removeTimer(id | 0);
  };
  page.clearInterval = function clearInterval(id) {
    host.removeTimer(id | 0);
  };
  page.queueMicrotask = function queueMicrotask(callback) {
    requireFunction('queueMicrotask', callback);
    Promise.resolve().then(() => {
      try {
        callback();
      } catch (error) {
        host.reportError(error);
      }
    });
  };
  return page;
}
