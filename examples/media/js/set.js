// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the application wants of the set. Every call may be refused, and in a browser without a set
// there is no object at all: the application goes on either way.
window.Lantern = window.Lantern || {};

(function () {
  'use strict';

  const orvane = window.dravelt && window.dravelt.orvane;
  const keys = [
    'ColorF0Red',
    'ColorF2Yellow',
    'Info',
    'MediaFastForward',
    'MediaPause',
    'MediaPlay',
    'MediaPlayPause',
    'MediaRewind',
    'MediaStop',
  ];

  function attempt(what, call) {
    if (!orvane) {
      return undefined;
    }
    try {
      return call();
    } catch (error) {
      console.warn('[lantern] ' + what + ': ' + error.name + ', ' + error.message);
      return undefined;
    }
  }

  function setScreenSaver(allowed) {
    attempt('screen saver', function () {
      const states = orvane.OrvaneScreenSaverState;
      orvane.setScreenSaver(
        allowed ? states.SCREEN_SAVER_ON : states.SCREEN_SAVER_OFF,
        () => {},
        (error) => console.warn('[lantern] screen saver: ' + error.message)
      );
    });
  }

  window.Lantern.set = {
    available: Boolean(orvane),

    registerKeys: () => attempt('keys', () => orvane.registerKey(keys)),

    // A point of the start-up's timeline.
    mark: (label) => attempt('profiling', () => orvane.recordProfiling(label)),

    // While a film plays, the set stays awake.
    holdScreenSaver: () => setScreenSaver(false),
    releaseScreenSaver: () => setScreenSaver(true),

    // The keyboard stands at the right, so that the results beside it stay in view.
    placeKeyboard: () =>
      attempt('keyboard', () => orvane.setIMEPosition('95%', '91%', 'BOTTOM_RIGHT')),

    recommend(words) {
      attempt('recommended words', function () {
        const type = orvane.OrvaneRecommendedWordsType;
        orvane.setIMERecommendedWordsType(
          words.length > 0 ? type.RECOMMENDED_WORDS_ENABLE : type.RECOMMENDED_WORDS_DISABLE
        );
        if (words.length > 0) {
          orvane.setIMERecommendedWords(words);
        }
      });
    },
  };
})();
