// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The search: a field for the set's keyboard, which is told where to stand and which words to
// offer.
(function () {
  'use strict';

  const Lantern = window.Lantern;
  const get = (id) => document.getElementById(id);
  const mostWords = 6;
  const mostResults = 6;
  const columns = 3;

  let results = [];
  let chosen = -1; // -1: the field has the focus

  const films = () =>
    [].concat.apply(
      [],
      Lantern.catalogue.map((group) => group.films)
    );

  function find(query) {
    const wanted = query.trim().toLowerCase();
    return films().filter(
      (film) => wanted === '' || (film.title + ' ' + film.text).toLowerCase().includes(wanted)
    );
  }

  // Words of the titles that begin with what was typed.
  function wordsFor(query) {
    const wanted = query.trim().toLowerCase();
    const words = films()
      .reduce((all, film) => all.concat(film.title.split(' ')), [])
      .filter((word) => word.length > 3 && word.toLowerCase().startsWith(wanted));
    return Array.from(new Set(words)).slice(0, mostWords);
  }

  function showFocus() {
    get('query').classList.toggle('focused', chosen < 0);
    Array.from(get('results').children).forEach((poster, index) =>
      poster.classList.toggle('focused', index === chosen)
    );
    if (chosen < 0) {
      get('query').focus();
    } else {
      get('query').blur();
    }
  }

  function search() {
    const query = get('query').value;
    const words = wordsFor(query);
    results = find(query).slice(0, mostResults);
    get('results').replaceChildren(...results.map(Lantern.poster.make));
    get('words').textContent =
      results.length > 0 ? 'Try: ' + words.join(', ') : 'Nothing is called that.';
    Lantern.set.recommend(words);
  }

  function choose(place) {
    chosen = Math.max(-1, Math.min(results.length - 1, place));
    showFocus();
  }

  Lantern.search = {
    build: () => get('query').addEventListener('input', search),
    open() {
      Lantern.set.placeKeyboard();
      chosen = -1;
      search();
      showFocus();
    },
    close() {
      get('query').blur();
      Lantern.set.recommend([]);
    },
    keys: {
      ArrowDown: () => choose(chosen < 0 ? 0 : chosen + columns),
      ArrowUp: () => choose(chosen < columns ? -1 : chosen - columns),
      ArrowLeft: () => chosen >= 0 && choose(Math.max(0, chosen - 1)),
      ArrowRight: () => chosen >= 0 && choose(chosen + 1),
      Enter: () => (chosen < 0 ? choose(0) : Lantern.show('player', results[chosen])),
      Back: () => Lantern.show('home'),
    },
  };
})();
