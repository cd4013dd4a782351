// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
/* global extension, exports */

exports.sendSync = function (text) {
  return extension.internal.sendSyncMessage(text);
};

exports.post = function (message) {
  extension.postMessage(message);
};

exports.setListener = function (listener) {
  extension.setMessageListener(listener);
};
