// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Which key of the keyboard is which key of the remote control.

/** What is typed, the key's symbol, and how the list of shortcuts writes it. */
export const shortcuts = [
  ['ArrowUp', 'Up', '↑'],
  ['ArrowDown', 'Down', '↓'],
  ['ArrowLeft', 'Left', '←'],
  ['ArrowRight', 'Right', '→'],
  ['Enter', 'Return', 'Enter'],
  ['Backspace', 'XF86Back', 'Backspace'],
  ['Escape', 'XF86Exit', 'Esc'],
  ['h', 'XF86Home', 'H'],
  ...Array.from('0123456789', (digit) => [digit, digit, digit]),
  ['-', 'minus', '-'],
  ['r', 'XF86Red', 'R'],
  ['g', 'XF86Green', 'G'],
  ['y', 'XF86Yellow', 'Y'],
  ['b', 'XF86Blue', 'B'],
  ['PageUp', 'XF86RaiseChannel', 'Page Up'],
  ['PageDown', 'XF86LowerChannel', 'Page Down'],
  [']', 'XF86AudioRaiseVolume', ']'],
  ['[', 'XF86AudioLowerVolume', '['],
  ['m', 'XF86AudioMute', 'M'],
  [' ', 'XF86PlayBack', 'Space'],
  ['s', 'XF86AudioStop', 'S'],
  [',', 'XF86AudioRewind', ','],
  ['.', 'XF86AudioNext', '.'],
  ['i', 'XF86Info', 'I'],
  ['t', 'XF86SimpleMenu', 'T'],
];
