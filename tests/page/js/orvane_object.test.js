// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

const { orvane } = dravelt;

describe('dravelt.orvane', () => {
  test('has its methods', () => {
    const methods = [
      'getVersion',
      'getUuid',
      'generateKey',
      'registerKey',
      'registerKeyInSpecialMode',
      'unregisterKey',
      'getSpecialSupportedKeys',
      'getSystemStat',
      'getForegroundAppId',
      'setEpopAppWindow',
      'requestTvContextTask',
      'setIMERecommendedWordsType',
      'setIMERecommendedWords',
      'setIMEPosition',
      'setScreenSaver',
      'resetProfiling',
      'recordProfiling',
      'setAppFocus',
      'setWindowStackMode',
      'setAuxHint',
      'getAppState',
    ];
    assert.equal(methods.length, 21);
    for (const name of methods) {
      assert.equal(typeof orvane[name], 'function', name);
    }
  });

  test('has four enumerations', () => {
    assert.deepEqual(orvane.OrvaneTarget, { CONFIG_LAST_SOURCE: 0 });
    assert.deepEqual(orvane.OrvaneAction, { CONFIG_LAUNCH: 0 });
    assert.deepEqual(orvane.OrvaneScreenSaverState, { SCREEN_SAVER_OFF: 0, SCREEN_SAVER_ON: 1 });
    assert.deepEqual(orvane.OrvaneRecommendedWordsType, {
      RECOMMENDED_WORDS_DISABLE: 0,
      RECOMMENDED_WORDS_ENABLE: 1,
    });
  });

  test('keeps the others to itself', () => {
    const names = ['OrvaneResource', 'OrvaneWindowStackMode', 'OrvaneAlign', 'OrvaneKeyGrabMode'];
    for (const name of [...names, 'resolutionNames']) {
      assert.equal(orvane[name], undefined, name);
      assert.equal(globalThis[name], undefined, name);
    }
  });

  test('leaves no name of its script in the page', () => {
    for (const name of ['OrvaneManager', 'native', 'registerkeyMap', 'callSync', 'exports']) {
      assert.equal(typeof globalThis[name], 'undefined', name);
    }
  });

  test('is there to stay', () => {
    dravelt.orvane = 'mine';
    assert.ok(dravelt.orvane === orvane);
    assert.equal(delete dravelt.orvane, false);
    assert.throws(
      () => {
        'use strict';

        dravelt.other = 1;
      },
      { name: 'TypeError' }
    );
  });

  test('sends nothing before a method is called', () => {
    assert.deepEqual(testing.messages(), []);
  });
});
