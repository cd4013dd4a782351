// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Calls every method of dravelt.orvane once and shows what each one answers: in the page's table
// where there is a page to show it in, and on the console.
(function () {
  'use strict';

  const orvane = dravelt.orvane;
  const answers = [];

  // One row of the tour. A refusal is an answer too: the object says why in its code and name.
  function note(call, text, failed) {
    answers.push({ call: call, text: text, failed: Boolean(failed) });
  }

  function describe(error) {
    return error.name + ' (code ' + error.code + '): ' + error.message;
  }

  function show(value) {
    return value === undefined ? 'done' : JSON.stringify(value);
  }

  // A method that answers at once: it returns its result, or throws.
  function ask(call, method) {
    try {
      note(call, show(method()));
    } catch (error) {
      note(call, describe(error), true);
    }
  }

  // A method that answers later, through one of two callbacks.
  function askLater(call, method) {
    return new Promise(function (resolve) {
      function onsuccess(result) {
        note(call, result === null ? 'done' : show(result));
        resolve();
      }
      function onerror(error) {
        note(call, describe(error), true);
        resolve();
      }
      try {
        method(onsuccess, onerror);
      } catch (error) {
        onerror(error);
      }
    });
  }

  function visitIdentity() {
    ask('getVersion()', () => orvane.getVersion());
    ask('getUuid()', () => orvane.getUuid());
    ask('getForegroundAppId()', () => orvane.getForegroundAppId());
    ask('getAppState()', () => orvane.getAppState());
  }

  function visitKeys() {
    const colours = ['ColorF0Red', 'ColorF1Green', 'ColorF2Yellow', 'ColorF3Blue'];
    const keys = orvane.getSpecialSupportedKeys();
    note(
      'getSpecialSupportedKeys()',
      keys.length + ' keys, the first is ' + keys[0].name + ', code ' + keys[0].code
    );
    ask('registerKey(the colour keys)', () => orvane.registerKey(colours));
    ask('generateKey("VolumeUp")', () => orvane.generateKey('VolumeUp'));
    ask('unregisterKey(the colour keys)', () => orvane.unregisterKey(colours));
    ask('registerKeyInSpecialMode(["Guide"], "TOPMOST")', () =>
      orvane.registerKeyInSpecialMode(['Guide'], 'TOPMOST')
    );
  }

  function visitKeyboard() {
    const type = orvane.OrvaneRecommendedWordsType;
    ask('setIMEPosition("50%", "720px", "TOP_CENTER")', () =>
      orvane.setIMEPosition('50%', '720px', 'TOP_CENTER')
    );
    ask('setIMERecommendedWordsType(ENABLE)', () =>
      orvane.setIMERecommendedWordsType(type.RECOMMENDED_WORDS_ENABLE)
    );
    ask('setIMERecommendedWords(["news", "sport"])', () =>
      orvane.setIMERecommendedWords(['news', 'sport'])
    );
  }

  function visitWindow() {
    ask('setAppFocus(true)', () => orvane.setAppFocus(true));
    ask('setWindowStackMode("ABOVE")', () => orvane.setWindowStackMode('ABOVE'));
    ask('setEpopAppWindow(1)', () => orvane.setEpopAppWindow(1));
    ask('requestTvContextTask(LAST_SOURCE, LAUNCH)', () =>
      orvane.requestTvContextTask(
        orvane.OrvaneTarget.CONFIG_LAST_SOURCE,
        orvane.OrvaneAction.CONFIG_LAUNCH
      )
    );
    return askLater('setAuxHint({ key, value })', function (onsuccess, onerror) {
      orvane.setAuxHint({ key: 'tour.hint', value: 'seen' }, onsuccess, onerror);
    });
  }

  function visitScreenSaver() {
    return askLater('setScreenSaver(OFF)', function (onsuccess, onerror) {
      orvane.setScreenSaver(orvane.OrvaneScreenSaverState.SCREEN_SAVER_OFF, onsuccess, onerror);
    });
  }

  // One after the other: the measurements of one page must not overlap.
  function visitMeasurements() {
    return askLater('recordProfiling("tour")', (onsuccess, onerror) =>
      orvane.recordProfiling('tour', onsuccess, onerror)
    )
      .then(() =>
        askLater('resetProfiling()', (onsuccess, onerror) =>
          orvane.resetProfiling(onsuccess, onerror)
        )
      )
      .then(() =>
        askLater('getSystemStat("CPU")', (onsuccess, onerror) =>
          orvane.getSystemStat('CPU', onsuccess, onerror)
        )
      )
      .then(() =>
        askLater('getSystemStat("MEMORY")', (onsuccess, onerror) =>
          orvane.getSystemStat('MEMORY', onsuccess, onerror)
        )
      );
  }

  // The script runs without a document too.
  function fillTable() {
    if (typeof document === 'undefined') {
      return;
    }
    const table = document.getElementById('answers');
    answers.forEach(function (answer) {
      const row = table.insertRow();
      row.insertCell().textContent = answer.call;
      row.insertCell().textContent = answer.text;
      row.className = answer.failed ? 'failed' : '';
    });
  }

  function printTable() {
    const width = Math.max.apply(
      null,
      answers.map((answer) => answer.call.length)
    );
    const lines = answers.map(
      (answer) =>
        answer.call.padEnd(width) + '  ->  ' + (answer.failed ? 'refused: ' : '') + answer.text
    );
    console.log('\nWhat each method of dravelt.orvane answered:\n\n' + lines.join('\n') + '\n');
  }

  visitIdentity();
  visitKeys();
  visitKeyboard();
  visitWindow()
    .then(visitScreenSaver)
    .then(visitMeasurements)
    .then(function () {
      fillTable();
      printTable();
    });
})();
