// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The first view: rows of posters. Up and down change the row, left and right the film; each row
// remembers where it was left.
(function () {
  'use strict';

  const rowHeight = 420;
  const posterStep = 252;
  const Lantern = window.Lantern;
  const get = (id) => document.getElementById(id);

  let row = 0;
  const places = [];
  const tracks = [];
  const listed = new Set();

  function build() {
    Lantern.catalogue.forEach(function (group) {
      const section = document.createElement('section');
      const title = document.createElement('h3');
      title.textContent = group.name;
      const track = document.createElement('div');
      track.className = 'posters';
      group.films.forEach((film) => track.appendChild(Lantern.poster.make(film)));
      section.append(title, track);
      get('rows').appendChild(section);
      tracks.push(track);
      places.push(0);
    });
  }

  const film = () => Lantern.catalogue[row].films[places[row]];

  function showHero() {
    const shown = film();
    get('hero-title').textContent = shown.title;
    get('hero-facts').textContent =
      shown.year +
      '  ·  ' +
      shown.minutes +
      ' min' +
      (listed.has(shown) ? '  ·  on your list' : '');
    get('hero-text').textContent = shown.text;
    get('hero-art').replaceChildren(Lantern.poster.drawWide(shown));
    get('home').style.setProperty('--hue', shown.hue);
  }

  function showFocus() {
    const before = document.querySelector('#home .focused');
    if (before) {
      before.classList.remove('focused');
    }
    tracks[row].children[places[row]].classList.add('focused');
    tracks[row].style.transform =
      'translateX(' + -posterStep * Math.max(0, places[row] - 4) + 'px)';
    get('rows').style.transform = 'translateY(' + -rowHeight * row + 'px)';
    showHero();
  }

  function go(nextRow, place) {
    row = Math.max(0, Math.min(tracks.length - 1, nextRow));
    places[row] = Math.max(0, Math.min(tracks[row].children.length - 1, place));
    showFocus();
  }

  function toggleList() {
    const shown = film();
    if (!listed.delete(shown)) {
      listed.add(shown);
    }
    Lantern.notify(listed.has(shown) ? 'Added to your list' : 'Taken off your list');
    showHero();
  }

  Lantern.home = {
    build: build,
    open: showFocus,
    close: () => {},
    keys: {
      ArrowLeft: () => go(row, places[row] - 1),
      ArrowRight: () => go(row, places[row] + 1),
      ArrowUp: () => go(row - 1, places[Math.max(0, row - 1)]),
      ArrowDown: () => go(row + 1, places[Math.min(tracks.length - 1, row + 1)]),
      Enter: () => Lantern.show('player', film()),
      MediaPlay: () => Lantern.show('player', film()),
      MediaPlayPause: () => Lantern.show('player', film()),
      ColorF0Red: toggleList,
      ColorF2Yellow: () => Lantern.show('search'),
      Info: () => Lantern.notify(film().text),
      Back: () => go(0, 0),
    },
  };
})();
