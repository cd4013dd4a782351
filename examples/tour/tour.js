// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Calls every method of dravelt.orvane once and keeps what each one answers. In a page,
// tour_page.js shows the answers; without a document, as in `orvane exec`, they are printed as a
// table.
(function () {
  'use strict';

  const orvane = dravelt.orvane;
  const colours = ['ColorF0Red', 'ColorF1Green', 'ColorF2Yellow', 'ColorF3Blue'];

  // A step is one call: `run` returns its answer, or a promise of it, or throws.
  function step(group, call, about, run) {
    return { group: group, call: call, about: about, run: run, state: 'waiting', answer: '' };
  }

  // For the methods that answer later, through one of two callbacks.
  function later(method) {
    return () =>
      new Promise(function (resolve, reject) {
        method((result) => resolve(result === null ? undefined : result), reject);
      });
  }

  function setSteps() {
    const group = 'The set and its applications';
    return [
      step(group, 'getVersion()', 'The version of the object’s interface.', () =>
        orvane.getVersion()
      ),
      step(group, 'getUuid()', 'Made once for this application on this set, and kept.', () =>
        orvane.getUuid()
      ),
      step(group, 'getForegroundAppId()', 'The application that has the focus.', () =>
        orvane.getForegroundAppId()
      ),
      step(group, 'getAppState()', 'The state of this application, or of one that you name.', () =>
        orvane.getAppState()
      ),
      step(
        group,
        'requestTvContextTask(LAST_SOURCE, LAUNCH)',
        'Asks the set to show what it showed before: a channel or an input.',
        () =>
          orvane.requestTvContextTask(
            orvane.OrvaneTarget.CONFIG_LAST_SOURCE,
            orvane.OrvaneAction.CONFIG_LAUNCH
          )
      ),
    ];
  }

  function keyboardSteps() {
    const group = 'On-screen keyboard';
    const type = orvane.OrvaneRecommendedWordsType;
    return [
      step(
        group,
        'setIMEPosition("50%", "720px", "TOP_CENTER")',
        'Where the keyboard stands: pixels or percent of the screen.',
        () => orvane.setIMEPosition('50%', '720px', 'TOP_CENTER')
      ),
      step(
        group,
        'setIMERecommendedWordsType(ENABLE)',
        'Whether the keyboard shows words that the application recommends.',
        () => orvane.setIMERecommendedWordsType(type.RECOMMENDED_WORDS_ENABLE)
      ),
      step(group, 'setIMERecommendedWords(["news", "sport"])', 'The recommended words.', () =>
        orvane.setIMERecommendedWords(['news', 'sport'])
      ),
    ];
  }

  function describeKeys() {
    const keys = orvane.getSpecialSupportedKeys();
    return keys.length + ' keys, the first is ' + keys[0].name + ', code ' + keys[0].code;
  }

  function keySteps() {
    const group = 'Remote control';
    return [
      step(group, 'getSpecialSupportedKeys()', 'Every key that can be registered.', describeKeys),
      step(
        group,
        'registerKey(the colour keys)',
        'From now on these keys reach the application. Needs the privilege tv.inputdevice.',
        () => orvane.registerKey(colours)
      ),
      step(group, 'generateKey("VolumeUp")', 'Presses a key for the user.', () =>
        orvane.generateKey('VolumeUp')
      ),
      step(group, 'unregisterKey(the colour keys)', 'Gives the keys back to the set.', () =>
        orvane.unregisterKey(colours)
      ),
      step(
        group,
        'registerKeyInSpecialMode(["Guide"], "TOPMOST")',
        'Takes a key before every other application. Needs metadata in config.xml.',
        () => orvane.registerKeyInSpecialMode(['Guide'], 'TOPMOST')
      ),
    ];
  }

  function windowSteps() {
    const group = 'Window';
    return [
      step(group, 'setAppFocus(true)', 'Whether this window wants the keys.', () =>
        orvane.setAppFocus(true)
      ),
      step(group, 'setWindowStackMode("ABOVE")', 'Above or below the other windows.', () =>
        orvane.setWindowStackMode('ABOVE')
      ),
      step(
        group,
        'setEpopAppWindow(0, true)',
        'Moves the window: to a place of its own, or to a quarter of the screen. UHD sets only.',
        () => orvane.setEpopAppWindow(0, true)
      ),
      step(
        group,
        'setAuxHint({ key, value })',
        'A hint for the window manager. Needs a platform privilege.',
        later((onsuccess, onerror) =>
          orvane.setAuxHint({ key: 'tour.hint', value: 'seen' }, onsuccess, onerror)
        )
      ),
    ];
  }

  function screenSaverSteps() {
    const group = 'Screen saver';
    const states = orvane.OrvaneScreenSaverState;
    const set = (state) =>
      later((onsuccess, onerror) => orvane.setScreenSaver(state, onsuccess, onerror));
    return [
      step(
        group,
        'setScreenSaver(OFF)',
        'While a film plays: the set stays awake.',
        set(states.SCREEN_SAVER_OFF)
      ),
      step(
        group,
        'setScreenSaver(ON)',
        'Gives the screen saver back to the set.',
        set(states.SCREEN_SAVER_ON)
      ),
    ];
  }

  function figureSteps() {
    const group = 'Figures';
    return [
      step(
        group,
        'recordProfiling("tour")',
        'Marks this moment; the marks make a timeline.',
        later((onsuccess, onerror) => orvane.recordProfiling('tour', onsuccess, onerror))
      ),
      step(
        group,
        'resetProfiling()',
        'Forgets every mark.',
        later((onsuccess, onerror) => orvane.resetProfiling(onsuccess, onerror))
      ),
      step(
        group,
        'getSystemStat("CPU")',
        'How busy the processors are, in percent. Takes about a second.',
        later((onsuccess, onerror) => orvane.getSystemStat('CPU', onsuccess, onerror))
      ),
      step(
        group,
        'getSystemStat("MEMORY")',
        'What the runtime’s process uses, in MiB.',
        later((onsuccess, onerror) => orvane.getSystemStat('MEMORY', onsuccess, onerror))
      ),
    ];
  }

  const steps = [].concat(
    setSteps(),
    keyboardSteps(),
    keySteps(),
    screenSaverSteps(),
    windowSteps(),
    figureSteps()
  );

  function describe(error) {
    return error.name + ' (code ' + error.code + '): ' + error.message;
  }

  function show(value) {
    if (value === undefined) {
      return 'done';
    }
    return typeof value === 'string' && value.includes(' ') ? value : JSON.stringify(value);
  }

  // Makes one call. A refusal is an answer too: the object says why in its code and name.
  function take(one) {
    one.state = 'running';
    return Promise.resolve()
      .then(one.run)
      .then(
        function (value) {
          one.state = 'answered';
          one.answer = show(value);
        },
        function (error) {
          one.state = 'refused';
          one.answer = describe(error);
        }
      );
  }

  // One after the other: the measurements of one page must not overlap. `changed` is called with
  // each step, before and after its call.
  function takeAll(changed) {
    return steps.reduce(
      (before, one) =>
        before.then(function () {
          const taken = take(one);
          changed(one);
          return taken.then(() => changed(one));
        }),
      Promise.resolve()
    );
  }

  function printTable() {
    const width = Math.max.apply(
      null,
      steps.map((one) => one.call.length)
    );
    const lines = steps.map(
      (one) =>
        one.call.padEnd(width) +
        '  ->  ' +
        (one.state === 'refused' ? 'refused: ' : '') +
        one.answer
    );
    console.log('\nWhat each method of dravelt.orvane answered:\n\n' + lines.join('\n') + '\n');
  }

  if (typeof document === 'undefined') {
    takeAll(() => {}).then(printTable);
  } else {
    window.tour = { steps: steps, colours: colours, take: take, takeAll: takeAll };
  }
})();
