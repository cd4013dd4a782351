// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A page that moves a focus through links, with old-style handlers.
/* eslint-disable no-implicit-globals, no-var, no-unused-vars */
/* global $, log, version, appId, getJson */

var links = ['one', 'two'];
var place = 0;

// As well as what the page has in its onload already.
var loadedBefore = window.onload;
window.onload = function () {
  loadedBefore();
  log('loaded');
};

function showChannels(answer) {
  var html = '';
  for (var index = 0; index < answer.channels.length; index++) {
    html += '<li>' + answer.channels[index].number + ' ' + answer.channels[index].name + '</li>';
  }
  $('channels').innerHTML = html;
}

function searched() {
  log('searched ' + document.search.text.value);
}

function start() {
  $('app').innerText = appId;
  getJson('data/channels.json?' + new Date().getTime(), showChannels);
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
  switch (code) {
    case 10009: // Back
    case 27: // the same on a computer
      document.search.text.focus();
      return false;
    case 29443: // Enter of sets that are gone
      return false;
  }
  return true;
}

function clicked(name) {
  log('clicked ' + name);
}
