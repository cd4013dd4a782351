// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Suites are written with describe, test and assert, as elsewhere. A test may return a promise. It
// fails when it throws, when the promise is rejected, and when anything in its page goes uncaught.
(function makeHarness() {
  'use strict';

  const tests = [];
  const path = [];
  let state = 'waiting';

  globalThis.describe = function describe(name, define) {
    path.push(name);
    define();
    path.pop();
  };

  globalThis.test = function test(name, run) {
    tests.push({ name: [...path, name].join(' > '), run });
  };

  class AssertionError extends Error {}

  const show = (value) => (value === undefined ? 'undefined' : JSON.stringify(value));

  function check(good, text, note) {
    if (!good) {
      throw new AssertionError(note === undefined ? text : `${note}: ${text}`);
    }
  }

  globalThis.assert = {
    ok: (value, note) => check(value, `${show(value)} is not truthy`, note),

    equal: (actual, expected, note) =>
      check(Object.is(actual, expected), `${show(actual)} is not ${show(expected)}`, note),

    // By JSON, so that values of any origin compare.
    deepEqual: (actual, expected, note) =>
      check(show(actual) === show(expected), `${show(actual)} is not ${show(expected)}`, note),

    includes: (text, part, note) =>
      check(text.includes(part), `${show(text)} does not include ${show(part)}`, note),

    // `expected`: what the thrown value's properties must be. Returns the thrown value.
    throws(run, expected = {}) {
      let thrown;
      try {
        run();
      } catch (error) {
        thrown = { error };
      }
      check(thrown !== undefined, 'nothing was thrown');
      for (const key of Object.keys(expected)) {
        assert.equal(thrown.error[key], expected[key], `thrown ${key}`);
      }
      return thrown.error;
    },
  };

  // The runner's own functions are there already.
  Object.assign(testing, {
    names: () => tests.map(({ name }) => name),
    result: () => state,

    start(index) {
      state = 'running';
      // A rejection is left unhandled on purpose: the runner counts it.
      Promise.resolve()
        .then(() => tests[index].run())
        .then(() => {
          state = 'ended';
        });
    },

    // Waits in the page's time.
    sleep: (milliseconds) =>
      new Promise((resolve) => {
        setTimeout(resolve, milliseconds);
      }),
  });
})();
