// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Posters and film scenes, drawn: each film has a hue and a motif.
(function () {
  'use strict';

  // The outlines of what is far and what is near.
  const motifs = {
    dunes: ['M0 250q70-70 150-20t150-30v200H0z', 'M0 320q90-80 170-20t130-30v130H0z'],
    city: [
      'M0 400V260h40v-60h50v90h30V170h60v120h30v-60h50v40h40v130z',
      'M0 400v-70h60v-50h50v60h80v-90h50v70h60v80z',
    ],
    sea: ['M0 270q37-24 75 0t75 0 75 0 75 0v130H0z', 'M0 320q37-24 75 0t75 0 75 0 75 0v80H0z'],
    moon: ['M0 340q150-60 300 0v60H0z', 'M0 370q150-50 300 0v30H0z'],
    hills: ['M0 290q80-90 160-10t140-40v160H0z', 'M0 350q60-60 140-20t160-20v90H0z'],
    peaks: ['M0 400l90-210 60 100 60-140 90 250z', 'M0 400l60-120 70 80 70-110 100 150z'],
  };

  function shape(name, attributes) {
    const element = document.createElementNS('http://www.w3.org/2000/svg', name);
    Object.keys(attributes).forEach((key) => element.setAttribute(key, attributes[key]));
    return element;
  }

  const upright = { viewBox: '0 0 300 400', height: 120, radius: 46 };
  const wide = { viewBox: '0 165 300 169', height: 222, radius: 24 };

  // An SVG element of the film's scene, for a poster or for the whole screen.
  function draw(film, form) {
    const [far, near] = motifs[film.motif];
    const { viewBox, height, radius } = form;
    const scene = shape('svg', { viewBox: viewBox, preserveAspectRatio: 'xMidYMid slice' });
    scene.style.setProperty('--hue', film.hue);
    scene.append(
      shape('rect', { class: 'sky', width: 300, height: 400 }),
      shape('circle', { class: 'light', cx: 205, cy: height, r: radius }),
      shape('path', { class: 'far', d: far }),
      shape('path', { class: 'near', d: near })
    );
    return scene;
  }

  function make(film) {
    const poster = document.createElement('div');
    poster.className = 'poster';
    poster.appendChild(draw(film, upright));
    const title = document.createElement('span');
    title.textContent = film.title;
    poster.appendChild(title);
    return poster;
  }

  window.Lantern.poster = { drawWide: (film) => draw(film, wide), make: make };
})();
