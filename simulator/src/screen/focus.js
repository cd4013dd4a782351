// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Who has the keyboard: the application's page, the screen around it, or the rest of this page.

import { computed, signal } from '../view.js';
import { appId } from '../state/run.js';
import { set } from '../state/set.js';

export const frameHasFocus = signal(false);

/**
 * A pointer on a button of this page would take the focus from the field that the application
 * edits, which a remote control does not. So buttons leave it there while the frame has it.
 */
export function keepApplicationFocus(event) {
  const inFrame = document.activeElement?.classList.contains('app-frame');
  if (inFrame && event.target.closest('button, summary')) {
    event.preventDefault();
  }
}

/** The running application as the set sees it, or null. */
export const ownApplication = computed(
  () => set.applications.value?.find((each) => each.id === appId.value) ?? null
);

/** Applications whose windows lie above that of the application under test, the topmost first. */
export const windowsAbove = computed(() => {
  const stack = set.windows.value?.stack ?? [];
  const own = stack.indexOf(appId.value);
  return own > 0 ? stack.slice(0, own) : [];
});
