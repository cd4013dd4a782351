// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The page of the tour: a card for each call, arrows to move, Enter to call again.
(function () {
  'use strict';

  const tour = window.tour;
  const columns = [
    ['The set and its applications', 'On-screen keyboard'],
    ['Remote control', 'Screen saver'],
    ['Window', 'Figures'],
  ];
  const keyNames = {
    13: 'Enter',
    37: 'ArrowLeft',
    38: 'ArrowUp',
    39: 'ArrowRight',
    40: 'ArrowDown',
    403: 'ColorF0Red',
    404: 'ColorF1Green',
    405: 'ColorF2Yellow',
    406: 'ColorF3Blue',
    10009: 'Back',
  };

  // cards[column][row] = { step, element }
  const cards = columns.map(() => []);
  const focus = { column: 0, row: 0 };

  function add(parent, tag, className, text) {
    const element = document.createElement(tag);
    element.className = className;
    element.textContent = text || '';
    parent.appendChild(element);
    return element;
  }

  function makeCard(parent, step) {
    const element = add(parent, 'div', 'card');
    add(element, 'div', 'call', step.call);
    add(element, 'div', 'answer', '…');
    return { step: step, element: element };
  }

  function build() {
    const board = document.getElementById('board');
    columns.forEach(function (groups, index) {
      const column = add(board, 'div', 'column');
      groups.forEach(function (group) {
        add(column, 'h2', '', group);
        tour.steps
          .filter((step) => step.group === group)
          .forEach((step) => cards[index].push(makeCard(column, step)));
      });
    });
  }

  function focused() {
    return cards[focus.column][focus.row];
  }

  function showDetail() {
    const step = focused().step;
    document.getElementById('detail-call').textContent = 'dravelt.orvane.' + step.call;
    document.getElementById('detail-about').textContent = step.about;
    const answer = document.getElementById('detail-answer');
    answer.textContent = step.answer;
    answer.className = step.state;
  }

  function move(column, row) {
    focused().element.classList.remove('focused');
    focus.column = Math.max(0, Math.min(cards.length - 1, column));
    focus.row = Math.max(0, Math.min(cards[focus.column].length - 1, row));
    focused().element.classList.add('focused');
    showDetail();
  }

  function showProgress() {
    const done = tour.steps.filter((step) => /answered|refused/.test(step.state)).length;
    const refused = tour.steps.filter((step) => step.state === 'refused').length;
    document.getElementById('done').textContent = done + ' of ' + tour.steps.length;
    document.getElementById('refused').textContent = refused > 0 ? refused + ' refused' : '';
    document.getElementById('bar').style.width = (100 * done) / tour.steps.length + '%';
    document.body.classList.toggle('complete', done === tour.steps.length);
  }

  function showStep(step) {
    const card = [].concat.apply([], cards).find((candidate) => candidate.step === step);
    card.element.className = 'card ' + step.state + (card === focused() ? ' focused' : '');
    card.element.querySelector('.answer').textContent = step.answer || '…';
    showProgress();
    if (card === focused()) {
      showDetail();
    }
  }

  function callAgain(step) {
    const taken = tour.take(step);
    showStep(step);
    taken.then(() => showStep(step));
  }

  function showKey(event) {
    const name = keyNames[event.keyCode] || event.key;
    document.getElementById('key').textContent = name + '  ' + event.keyCode;
  }

  function takeAll() {
    // The keys stay registered afterwards, so that they can be tried.
    return tour.takeAll(showStep).then(() => dravelt.orvane.registerKey(tour.colours));
  }

  const actions = {
    37: () => move(focus.column - 1, focus.row),
    38: () => move(focus.column, focus.row - 1),
    39: () => move(focus.column + 1, focus.row),
    40: () => move(focus.column, focus.row + 1),
    13: () => callAgain(focused().step),
    403: takeAll,
  };

  document.addEventListener('keydown', function (event) {
    showKey(event);
    const action = actions[event.keyCode];
    if (action) {
      action();
      event.preventDefault();
    }
  });

  build();
  move(0, 0);
  takeAll();
})();
