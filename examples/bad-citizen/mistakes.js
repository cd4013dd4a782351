// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The mistakes. `make` does what a careless application does, and returns what it gets, throws it,
// or returns a promise of it. `code` is how it looks in the application.
(function () {
  'use strict';

  const orvane = dravelt.orvane;
  const slowMs = 700;

  function blockFor(milliseconds) {
    const end = Date.now() + milliseconds;
    let rounds = 0;
    while (Date.now() < end) {
      rounds += 1;
    }
    return rounds;
  }

  function withCallbacks(method) {
    return new Promise(function (resolve, reject) {
      method(resolve, reject);
    });
  }

  window.mistakes = [
    {
      title: 'A privilege that config.xml does not declare',
      code: "orvane.registerKey(['ColorF0Red']);",
      make: () => orvane.registerKey(['ColorF0Red']),
      remedy:
        'The set does not hand over the key. config.xml asks for the privilege tv.inputdevice in ' +
        'an element <tizen:privilige>; it is <tizen:privilege>.',
      where: 'The simulator explains it under Problems, and at each press of the red key.',
    },
    {
      title: 'A privilege that the call itself checks',
      code: "orvane.unregisterKey(['ColorF0Red']);",
      make: () => orvane.unregisterKey(['ColorF0Red']),
      remedy:
        'This method looks for the privilege before it sends anything, and its error holds the ' +
        'line that is missing from config.xml.',
      where: 'The error says it all.',
    },
    {
      title: 'The name of a key that no remote control has',
      code: "orvane.registerKey(['ColorRed', 'MediaPlay']);",
      make: () => orvane.registerKey(['ColorRed', 'MediaPlay']),
      remedy:
        'One unknown name, and none of the list is registered. The names are those of ' +
        'getSpecialSupportedKeys(): the red key is ColorF0Red.',
      where: 'The name stands in the console: “This ColorRed is invalid!”',
    },
    {
      title: 'A number where a text is wanted',
      code: 'orvane.setIMEPosition(960, 720);',
      make: () => orvane.setIMEPosition(960, 720),
      remedy: 'Positions carry their unit: "960px" or "50%".',
      where: 'The error names the argument.',
    },
    {
      title: 'An argument that is left out',
      code: 'orvane.setAppFocus();',
      make: () => orvane.setAppFocus(),
      remedy: 'setAppFocus has no default: true to take the keys, false to leave them.',
      where: 'The error names the argument.',
    },
    {
      title: 'A metadata entry that is missing',
      code: "orvane.registerKeyInSpecialMode(['Guide'], 'TOPMOST');",
      make: () => orvane.registerKeyInSpecialMode(['Guide'], 'TOPMOST'),
      remedy:
        'Grabbing keys before every other application needs the entry ' +
        'http://dravelt.example/tv/metadata/register.keygrab.mode.special with the value true.',
      where: 'The log has the line of the library that looked for it.',
    },
    {
      title: 'A measurement that does not exist',
      code: "orvane.getSystemStat('DISK', show, fail);",
      make: () => withCallbacks((show, fail) => orvane.getSystemStat('DISK', show, fail)),
      remedy: 'There are two: CPU and MEMORY.',
      where: 'Thrown at once; the callback for errors is not called.',
    },
    {
      title: 'An application that does not run',
      code: "orvane.getAppState('NoSuchApp0.Main');",
      make: () => orvane.getAppState('NoSuchApp0.Main'),
      remedy:
        'The library refuses the message: only an application that runs has a state. Catch the ' +
        'error and take it for “not running”.',
      where: 'Messages shows what was sent and what came back.',
    },
    {
      title: 'A right of the platform’s own applications',
      code: "orvane.setAuxHint({ key: 'x', value: 'y' });",
      make: () =>
        withCallbacks((show, fail) => orvane.setAuxHint({ key: 'x', value: 'y' }, show, fail)),
      remedy:
        'setAuxHint is for applications with the privilege ' +
        'http://tizen.org/privilege/internal/default/platform, which a shop does not grant.',
      where: 'The log names the privilege, and so do the simulator’s Problems.',
    },
    {
      title: 'A key handler that takes ' + slowMs + ' ms',
      code: 'onkeydown = () => { /* ' + slowMs + ' ms of work */ };',
      make() {
        blockFor(slowMs);
        return 'The page did nothing else for ' + slowMs + ' ms; presses queued up behind it.';
      },
      remedy: 'Handle the key, draw, and do the work afterwards, in pieces or in a worker.',
      where: 'The heartbeat at the bottom of this page stops for as long.',
    },
    {
      title: 'A hundred synchronous calls in one handler',
      code: 'for (…) orvane.getAppState();',
      make() {
        const start = performance.now();
        for (let count = 0; count < 100; count += 1) {
          orvane.getAppState();
        }
        const took = Math.round(performance.now() - start);
        return '100 calls took ' + took + ' ms, during which the page stood still.';
      },
      remedy: 'Ask once and keep the answer, or ask when the page becomes visible.',
      where: 'Messages has every one of them, with its time.',
    },
  ];
})();
