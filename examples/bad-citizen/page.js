// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Shows the mistakes, makes the chosen one, and keeps a heartbeat that stops while the page is
// busy.
(function () {
  'use strict';

  const get = (id) => document.getElementById(id);
  const beatMs = 50;
  const lateMs = 250;
  let chosen = 0;

  function describe(error) {
    return error && error.name
      ? error.name + ' (code ' + error.code + '): ' + error.message
      : String(error);
  }

  function show(text, state) {
    get('outcome').textContent = text;
    get('outcome').className = state;
    get('mistakes').children[chosen].dataset.state = state;
  }

  function choose(index) {
    get('mistakes').children[chosen].classList.remove('focused');
    chosen = Math.max(0, Math.min(window.mistakes.length - 1, index));
    const item = get('mistakes').children[chosen];
    item.classList.add('focused');
    const mistake = window.mistakes[chosen];
    get('title').textContent = mistake.title;
    get('code').textContent = mistake.code;
    get('remedy').textContent = mistake.remedy;
    get('where').textContent = mistake.where;
    get('outcome').textContent = 'Press Enter.';
    get('outcome').className = '';
  }

  function makeMistake() {
    const index = chosen;
    return Promise.resolve()
      .then(window.mistakes[index].make)
      .then(
        (value) => show(typeof value === 'string' ? value : 'Returned ' + value, 'accepted'),
        (error) => show(describe(error), 'refused')
      );
  }

  const actions = {
    38: () => choose(chosen - 1),
    40: () => choose(chosen + 1),
    13: makeMistake,
  };

  document.addEventListener('keydown', function (event) {
    const action = actions[event.keyCode];
    if (action) {
      action();
      event.preventDefault();
    }
  });

  let last = performance.now();
  setInterval(function () {
    const now = performance.now();
    if (now - last > lateMs) {
      get('beat').textContent = 'The page stood still for ' + Math.round(now - last) + ' ms';
      get('beat').className = 'late';
    } else {
      get('beat').classList.toggle('on');
    }
    last = now;
  }, beatMs);

  window.mistakes.forEach(function (mistake) {
    const item = document.createElement('li');
    item.textContent = mistake.title;
    get('mistakes').appendChild(item);
  });
  choose(0);
})();
