// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What a person chose for this page; kept in the browser.

import { effect, signal } from '../view.js';

const storageKey = 'orvane.simulator';
const defaults = {
  theme: 'system', // or light, dark
  dockHeight: 260,
  setWidth: 320,
  setShown: true,
  tab: 'log',
  budgetMs: 16,
  openSections: ['applications', 'screenSaver'],
};

function stored() {
  try {
    return JSON.parse(localStorage.getItem(storageKey)) ?? {};
  } catch {
    return {};
  }
}

export const preferences = signal({ ...defaults, ...stored() });

/** Changes some of them. */
export function prefer(changes) {
  preferences.value = { ...preferences.value, ...changes };
}

effect(() => {
  try {
    localStorage.setItem(storageKey, JSON.stringify(preferences.value));
  } catch {
    // Without storage they last as long as the page.
  }
});

effect(() => {
  const { theme } = preferences.value;
  if (theme === 'system') {
    delete document.documentElement.dataset.theme;
  } else {
    document.documentElement.dataset.theme = theme;
  }
});
