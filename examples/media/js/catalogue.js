// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The films. A real application would fetch them.
(function () {
  'use strict';

  // [title, year, minutes, hue, motif, text]
  const rows = {
    'Continue watching': [
      [
        'The Salt Road',
        2024,
        112,
        28,
        'dunes',
        'Two sisters drive their late father’s lorry across a desert that has no roads left.',
      ],
      [
        'Northern Line',
        2023,
        96,
        205,
        'city',
        'A night-shift driver finds the same stranger at every terminus.',
      ],
      [
        'Paper Harbour',
        2025,
        124,
        188,
        'sea',
        'An island prints its own money, and then its own weather reports.',
      ],
      [
        'Small Hours',
        2022,
        88,
        262,
        'moon',
        'Six people who cannot sleep, one block of flats, one night.',
      ],
      [
        'Orchard Street',
        2021,
        101,
        120,
        'hills',
        'Everyone on the street sells the house next door.',
      ],
    ],
    'New this week': [
      [
        'Glass Mountain',
        2026,
        131,
        320,
        'peaks',
        'The last expedition that anybody will be allowed to make.',
      ],
      [
        'Low Tide',
        2026,
        94,
        172,
        'sea',
        'What the water leaves behind, and who comes to fetch it.',
      ],
      [
        'A Quiet Engine',
        2026,
        107,
        44,
        'city',
        'The inventor of a machine that makes no sound tries to sell it.',
      ],
      [
        'Winter Garden',
        2025,
        99,
        150,
        'hills',
        'Three botanists and one tropical plant in a polar station.',
      ],
      ['The Second Moon', 2026, 118, 238, 'moon', 'It has always been there. Nobody had looked.'],
      ['Ember', 2025, 90, 12, 'dunes', 'A village learns to live beside a mountain that glows.'],
    ],
    Documentaries: [
      [
        'Bridges',
        2024,
        58,
        210,
        'city',
        'How forty spans got across, and what held them up meanwhile.',
      ],
      ['The Slow River', 2023, 74, 165, 'sea', 'A year on a river that moves a metre an hour.'],
      ['High Pasture', 2022, 66, 95, 'peaks', 'The people who walk their animals up, every June.'],
      ['Lighthouse Keepers', 2025, 81, 195, 'moon', 'The job went; they stayed.'],
      ['Sand', 2024, 70, 36, 'dunes', 'The most used material on earth, one grain at a time.'],
    ],
    'For children': [
      [
        'Momo and the Comet',
        2025,
        64,
        285,
        'moon',
        'A cat, a rooftop, and something that wants to go home.',
      ],
      ['Hedgehog Post', 2024, 52, 80, 'hills', 'Letters, delivered slowly and with care.'],
      ['The Tallest Sandcastle', 2023, 48, 50, 'dunes', 'It takes a whole beach.'],
      ['Captain Puddle', 2022, 57, 200, 'sea', 'There is no ship too small.'],
    ],
  };

  window.Lantern.catalogue = Object.keys(rows).map((name) => ({
    name: name,
    films: rows[name].map((row) => ({
      title: row[0],
      year: row[1],
      minutes: row[2],
      hue: row[3],
      motif: row[4],
      text: row[5],
    })),
  }));
})();
