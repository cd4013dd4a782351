// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// What an extension's script text is evaluated in; the text stands in the place of scriptText. The
// build puts everything before it on one line, so that line numbers are those of the text. `xwalk`
// is the script's own, whatever the page has made of the global one; it stands outside, so that a
// script may declare that name.
// eslint-disable-next-line no-unused-vars -- the script uses it
(function (xwalk) {
  // eslint-disable-next-line no-unused-vars -- the script uses it
  return function (extension) {
    'use strict';
    // A script may declare it again.
    // eslint-disable-next-line no-var
    var exports = {};
    scriptText;
    return exports;
  };
});
