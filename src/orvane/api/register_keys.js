// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The keys that a page may register beyond the mandatory ones, in the order in which
// getSpecialSupportedKeys lists them: those of every set, and then those of the set's own remote
// control. The build fills both in, from keys/ and from the device key file.

function deviceKeyRows() {
  return [/* keys: device */];
}

export function registerkeyRows() {
  return [/* keys: registered */].concat(deviceKeyRows());
}
