// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The helpers of an application written long ago: everything is global, and every object and array
// gets a few more methods.
/* eslint-disable no-extend-native, no-implicit-globals, no-var, no-unused-vars */

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
