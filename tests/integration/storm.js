// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// A page that makes many asynchronous calls at once and counts how often each is answered.
(function defineStorm() {
  'use strict';

  const answers = [];
  const { orvane } = dravelt;

  const makers = [
    (done) => orvane.setScreenSaver(orvane.OrvaneScreenSaverState.SCREEN_SAVER_ON, done, done),
    (done) => orvane.recordProfiling('storm', done, done),
    (done) => orvane.resetProfiling(done, done),
  ];

  globalThis.storm = {
    // Makes `count` calls, of all kinds in turn.
    start(count) {
      for (let i = 0; i < count; ++i) {
        const call = answers.length;
        answers[call] = 0;
        makers[call % makers.length](() => {
          answers[call] += 1;
        });
      }
    },

    // How many calls were answered `times` times.
    answered(times) {
      return answers.filter((count) => count === times).length;
    },
  };
})();
