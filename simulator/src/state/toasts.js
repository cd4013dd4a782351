// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Short notices at the lower edge: what a command came to.

import { signal } from '../view.js';

const shownMs = 6000;

/** Each has an id, a kind ('info' or 'error') and a text. */
export const toasts = signal([]);

let lastId = 0;

export function dismissToast(id) {
  toasts.value = toasts.value.filter((each) => each.id !== id);
}

/** @param {'info' | 'error'} kind errors stay until they are dismissed */
export function toast(text, kind = 'info') {
  const id = ++lastId;
  toasts.value = [...toasts.value.filter((each) => each.text !== text), { id, kind, text }];
  if (kind === 'info') {
    setTimeout(() => dismissToast(id), shownMs);
  }
}
