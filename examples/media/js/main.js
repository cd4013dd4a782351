// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Views and keys. One view is shown at a time and receives the keys by name.
(function () {
  'use strict';

  const Lantern = window.Lantern;
  const get = (id) => document.getElementById(id);
  const noticeMs = 4000;

  const keyNames = {
    13: 'Enter',
    19: 'MediaPause',
    37: 'ArrowLeft',
    38: 'ArrowUp',
    39: 'ArrowRight',
    40: 'ArrowDown',
    403: 'ColorF0Red',
    405: 'ColorF2Yellow',
    412: 'MediaRewind',
    413: 'MediaStop',
    415: 'MediaPlay',
    417: 'MediaFastForward',
    457: 'Info',
    10009: 'Back',
    10252: 'MediaPlayPause',
  };

  let view = null;
  let noticeTimer = 0;

  Lantern.notify = function (text) {
    clearTimeout(noticeTimer);
    get('notice').textContent = text;
    get('notice').hidden = false;
    noticeTimer = setTimeout(() => {
      get('notice').hidden = true;
    }, noticeMs);
  };

  Lantern.show = function (name, argument) {
    if (view) {
      Lantern[view].close();
      get(view).hidden = true;
    }
    view = name;
    get(name).hidden = false;
    Lantern[name].open(argument);
  };

  document.addEventListener('keydown', function (event) {
    const action = Lantern[view].keys[keyNames[event.keyCode]];
    // A field keeps the arrows that move its caret.
    const inField = event.target.localName === 'input' && /37|39/.test(event.keyCode);
    if (action && !inField) {
      action();
      event.preventDefault();
    }
  });

  function showTime() {
    get('clock').textContent = new Date().toLocaleTimeString([], {
      hour: '2-digit',
      minute: '2-digit',
    });
  }

  Lantern.set.mark('scripts');
  Lantern.set.registerKeys();
  Lantern.home.build();
  Lantern.search.build();
  Lantern.set.mark('catalogue');
  showTime();
  setInterval(showTime, 10000);
  Lantern.show('home');
  requestAnimationFrame(() => setTimeout(() => Lantern.set.mark('first picture'), 0));
})();
