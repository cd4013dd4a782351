// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What is kept from start to start.

const key = 'bundled.starts';

export function countStart() {
  const starts = Number(localStorage.getItem(key) ?? 0) + 1;
  localStorage.setItem(key, String(starts));
  return starts;
}
