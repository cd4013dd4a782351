// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The helpers of an application written long ago: everything is global, and every object and array
// gets a few more methods.
/* eslint-disable no-extend-native, no-eval, no-implicit-globals, no-var, no-unused-vars */

Array.prototype.toJSON = function () {
  return 'an array of ' + this.length;
};

Function.prototype.bindTo = function (self) {
  var method = this;
  return function () {
    return method.apply(self, arguments);
  };
};

String.prototype.startsWithAny = function (list) {
  for (var index = 0; index < list.length; index++) {
    if (this.indexOf(list[index]) === 0) {
      return true;
    }
  }
  return false;
};

function $(id) {
  return document.getElementById(id);
}

function log(text) {
  $('output').innerHTML += text + '\n';
}

// By a request that waits for the first answer, to know whether there is a file at all, and by one
// that does not.
function getJson(address, done) {
  var first = new XMLHttpRequest();
  first.open('HEAD', address, false);
  first.send(null);
  if (first.status !== 200 && first.status !== 0) {
    log('no ' + address);
    return;
  }
  var request = new XMLHttpRequest();
  request.onreadystatechange = function () {
    if (request.readyState === 4) {
      done(eval('(' + request.responseText + ')'));
    }
  };
  request.open('GET', address, true);
  request.send(null);
}
