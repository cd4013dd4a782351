// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A page that moves a focus through links, with old-style handlers.
/* eslint-disable no-implicit-globals, no-var, no-unused-vars */
/* global $, log, version */

var links = ['one', 'two'];
var place = 0;

function start() {
  dravelt.orvane.registerKey(['ColorF3Blue']);
  $(links[place]).focus();
  log('started ' + version);
}

function keyPressed(event) {
  var code = event.which || event.keyCode;
  log('key ' + code);
  if (code === 40 || code === 38) {
    place = (place + 1) % links.length;
    $(links[place]).focus();
    return false;
  }
  return true;
}

function clicked(name) {
  log('clicked ' + name);
}
