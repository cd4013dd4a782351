// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The keys of the set's own remote control, which come last. The build puts the rows of the device
// key file in the place of this file.

export function deviceKeyRows() {
  return [];
}
