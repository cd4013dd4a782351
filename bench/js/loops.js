// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// The loops that the benchmark calls in a page; `native` is its own function there.
globalThis.loops = {
  // The limit: a text of 88 bytes in, one of 44 out, and nothing else.
  limit(count) {
    const text = 'x'.repeat(88);
    let answer = '';
    for (let i = 0; i < count; ++i) {
      answer = native(text);
    }
    return answer;
  },

  sameCall(count) {
    let state = '';
    for (let i = 0; i < count; ++i) {
      state = dravelt.orvane.getAppState();
    }
    return state;
  },

  // Eight requests in turn, with as much work in each as in the one above.
  differentCalls(count) {
    const ids = Array.from({ length: 8 }, (_, index) => `OrvaneBnch.App${index}`);
    let state = '';
    for (let i = 0; i < count; ++i) {
      state = dravelt.orvane.getAppState(ids[i % 8]);
    }
    return state;
  },

  // One call after the other, each made by the callback of the one before.
  asynchronousCalls(count) {
    let left = count;
    const next = () => {
      left -= 1;
      if (left >= 0) {
        dravelt.orvane.setScreenSaver(dravelt.orvane.OrvaneScreenSaverState.SCREEN_SAVER_ON, next);
      }
    };
    next();
  },

  // All calls at once.
  storm(count) {
    const state = dravelt.orvane.OrvaneScreenSaverState.SCREEN_SAVER_ON;
    for (let i = 0; i < count; ++i) {
      dravelt.orvane.setScreenSaver(state);
    }
  },
};
