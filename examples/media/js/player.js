// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The player: a drawn film, and what a player has to do on a set. While it plays, the screen saver
// is held off; in a pause the set may go to sleep.
(function () {
  'use strict';

  const Lantern = window.Lantern;
  const get = (id) => document.getElementById(id);
  const seekSeconds = 30;
  const controlsMs = 4000;

  let film = null;
  let seconds = 0;
  let playing = false;
  let ticking = 0;
  let hiding = 0;

  function clock(value) {
    const pad = (number) => String(Math.floor(number)).padStart(2, '0');
    return pad(value / 3600) + ':' + pad((value % 3600) / 60) + ':' + pad(value % 60);
  }

  function show() {
    const length = film.minutes * 60;
    get('played').style.width = (100 * seconds) / length + '%';
    get('position').textContent = clock(seconds);
    get('length').textContent = clock(length);
    get('state').textContent = playing ? '▶ Playing' : '❚❚ Paused';
    get('player').classList.toggle('playing', playing);
  }

  function showControls() {
    clearTimeout(hiding);
    get('controls').classList.add('shown');
    hiding = setTimeout(() => get('controls').classList.toggle('shown', !playing), controlsMs);
  }

  function tick() {
    seconds = Math.min(film.minutes * 60, seconds + 1);
    show();
  }

  function play() {
    if (!playing) {
      playing = true;
      ticking = setInterval(tick, 1000);
      Lantern.set.holdScreenSaver();
    }
    show();
    showControls();
  }

  function pause() {
    if (playing) {
      playing = false;
      clearInterval(ticking);
      Lantern.set.releaseScreenSaver();
    }
    show();
    showControls();
  }

  function seek(by) {
    seconds = Math.max(0, Math.min(film.minutes * 60, seconds + by));
    show();
    showControls();
  }

  const toggle = () => (playing ? pause() : play());
  const leave = () => Lantern.show('home');

  Lantern.player = {
    open(chosen) {
      film = chosen;
      seconds = 0;
      get('film').replaceChildren(Lantern.poster.drawWide(film));
      get('film-title').textContent = film.title;
      play();
    },
    close: pause,
    keys: {
      Enter: toggle,
      MediaPlayPause: toggle,
      MediaPlay: play,
      MediaPause: pause,
      MediaStop: leave,
      MediaRewind: () => seek(-seekSeconds),
      MediaFastForward: () => seek(seekSeconds),
      ArrowLeft: () => seek(-seekSeconds),
      ArrowRight: () => seek(seekSeconds),
      ArrowUp: showControls,
      ArrowDown: showControls,
      Info: () => Lantern.notify(film.text),
      Back: leave,
    },
  };
})();
