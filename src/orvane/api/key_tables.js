// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The keys of a remote control, by the name that a page uses. Each row is
//   [script name, platform symbol, key code] or
//   [script name, platform symbol, key code, hardware code].
// Rows stand in arrays because their order is part of the interface, and an object would move the
// digit keys to the front. They are read when a page first needs a key: making the tables takes
// longer than the rest of the script, and many pages never ask.

import { registerkeyRows } from './register_keys.js';

export let mandatorykeyMap = null;
export let generatekeyMap = null;
export let registerkeyMap = null;

// Makes the three tables, once. To be called before one is read.
export function loadKeyTables() {
  if (registerkeyMap === null) {
    mandatorykeyMap = keyTable(mandatorykeyRows());
    generatekeyMap = keyTable(generatekeyRows());
    registerkeyMap = keyTable(registerkeyRows());
  }
}

// The table of some rows, by script name. It has no prototype: only its own names are ever found.
function keyTable(rows) {
  const table = Object.create(null);
  for (let i = 0; i < rows.length; ++i) {
    const entry = { keyName: rows[i][1], keyCode: rows[i][2] };
    if (rows[i].length > 3) {
      entry.xkeyCode = rows[i][3];
    }
    table[rows[i][0]] = entry;
  }
  return table;
}

// Keys that every application receives without asking. They may be registered, but are not listed.
export function mandatorykeyRows() {
  return [
    ['ArrowLeft', 'Left', 37],
    ['ArrowUp', 'Up', 38],
    ['ArrowRight', 'Right', 39],
    ['ArrowDown', 'Down', 40],
    ['Enter', 'Return', 13],
    ['Back', 'XF86Back', 10009],
  ];
}

// Keys that a page may generate; only the hardware code leaves the script. The key codes of
// MediaRewind and MediaFastForward differ from those of registerkeyRows: both tables are right.
export function generatekeyRows() {
  return [
    ['VolumeUp', 'XF86AudioRaiseVolume', 447, 76],
    ['VolumeDown', 'XF86AudioLowerVolume', 448, 75],
    ['VolumeMute', 'XF86AudioMute', 449, 74],
    ['ChannelUp', 'XF86RaiseChannel', 427, 96],
    ['ChannelDown', 'XF86LowerChannel', 428, 95],
    ['ArrowLeft', 'Left', 37, 113],
    ['ArrowUp', 'Up', 38, 111],
    ['ArrowRight', 'Right', 39, 114],
    ['ArrowDown', 'Down', 40, 116],
    ['Enter', 'Return', 13, 36],
    ['Back', 'XF86Back', 10009, 9],
    ['GamepadHomekey', 'XF86GamepadHomekey', 10572, 572],
    ['MediaTrackPrevious', 'XF86PreviousChapter', 10232, 232],
    ['MediaRewind', 'XF86AudioRewind', 10176, 176],
    ['MediaTrackNext', 'XF86NextChapter', 10233, 233],
    ['MediaFastForward', 'XF86AudioNext', 10216, 216],
    ['Search', 'XF86Search', 10225, 225],
    ['Exit', 'XF86Exit', 10182, 182],
    ['Source', 'XF86Display', 10072, 72],
    ['MultiView', 'XF86MultiView', 10505, 505],
    ['Quenmar', 'XF86Home', 10071, 71],
    ['ARKVolume', 'XF86KeyARKVolume', 10593, 593],
    ['PlayBackGame', 'XF86PlayBackGame', 10571, 571],
    ['More', 'XF86More', 10148, 148],
  ];
}
