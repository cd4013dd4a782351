// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The screen saver as the set shows it: its own, or that of the application that owns it.

import { html, useEffect, useState } from '../view.js';
import { ask } from '../api/session.js';
import { set } from '../state/set.js';

function useTime(everyMs) {
  const [now, setNow] = useState(() => new Date());
  useEffect(() => {
    const timer = setInterval(() => setNow(new Date()), everyMs);
    return () => clearInterval(timer);
  }, []);
  return now;
}

function Clock() {
  const now = useTime(1000);
  return html`<span class="saver-clock"
    >${now.toLocaleTimeString('en-GB', { hour: '2-digit', minute: '2-digit' })}</span
  >`;
}

export function ScreenSaver() {
  const saver = set.screenSaver.value;
  if (!saver?.on) {
    return null;
  }
  const own = saver.owner === 'DEFAULT';
  return html`<button
    type="button"
    class="saver"
    aria-label="Screen saver; press to wake the set"
    onClick=${() => ask('screenSaver.activity')}
  >
    <span class="saver-drift">
      <${Clock} />
      <span class="saver-owner">${own ? 'Screen saver of the set' : saver.owner}</span>
    </span>
  </button>`;
}
