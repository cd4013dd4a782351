// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Registers a key in each of two ways, and then does nothing: what happens is what a test does.
addEventListener('DOMContentLoaded', () => {
  dravelt.orvane.registerKey(['ColorF0Red']);
  dravelt.orvane.registerKeyInSpecialMode(['MediaPlay'], 'REGISTERED');
  document.body.classList.add('ready');
});
