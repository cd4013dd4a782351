// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What is known of this run: the connection, the application, its pages, the library's process.

import { computed, signal } from '../view.js';

/** @type {import('@preact/signals').Signal<import('../api/connection.js').ConnectionState>} */
export const connection = signal('connecting');
export const info = signal(null);
export const pages = signal([]);
export const process = signal(null);

const topPages = computed(() =>
  pages.value.filter((page) => page.top).sort((a, b) => a.context - b.context)
);

/** The application's own document, the newest when there are several. */
export const topPage = computed(() => topPages.value.at(-1) ?? null);

/** Whether somebody edits text in the application. */
export const isEditing = computed(() =>
  topPages.value.some((page) => page.editing && page.visible !== false)
);

export const appId = computed(() => info.value?.app?.id ?? '');

/** Where the application's first page is. */
export const startUrl = computed(() => {
  if (!info.value) {
    return null;
  }
  return new URL(info.value.startPath ?? '', info.value.appUrl).href;
});
