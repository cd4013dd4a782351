// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// What the extension of the page tests gives to pages: its `extension` object, as it is, and a
// manager over it.
let calls = 0;

exports.extension = extension;
exports.send = extension.internal.sendSyncMessage;
exports.makeManager = function () {
  return new xwalk.utils.NativeManager(extension);
};
exports.countCalls = function () {
  calls += 1;
  return calls;
};
exports.fail = function () {
  throw new WebAPIException(WebAPIException.NOT_FOUND_ERR, 'nothing there');
};
