// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The beginning and the end of a page context.

import { fetchAddress, sendBeacon, startTimer } from './builtins.js';
import { listen } from './document_listeners.js';

const retryMs = 1000;

export function reloadPage() {
  location.reload();
}

// The context is closed at once when its page goes. A page that the browser kept, and shows again,
// has none any more, so it starts anew.
export function endWithPage(transport) {
  listen(window, 'pagehide', () => sendBeacon(transport.byeAddress));
  listen(window, 'pageshow', (event) => {
    if (event.persisted) {
      reloadPage();
    }
  });
}

let waiting = false;

// The server has been away for longer than it keeps a context. Once it answers again, the page is
// loaded again.
export async function reloadWhenBack() {
  if (waiting) {
    return;
  }
  waiting = true;
  try {
    const response = await fetchAddress(location.href, { method: 'HEAD', cache: 'no-store' });
    if (response.ok) {
      reloadPage();
      return;
    }
  } catch (error) {
    // Still away.
  }
  startTimer(() => {
    waiting = false;
    reloadWhenBack();
  }, retryMs);
}
