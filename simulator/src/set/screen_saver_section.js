// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The screen saver: whose it is, when it comes on, and a way not to wait for it.

import { html, useEffect, useState } from '../view.js';
import { ask } from '../api/session.js';
import { screenSaverToldAt, set } from '../state/set.js';
import { Button } from '../ui/controls.js';
import { minutes } from '../ui/format.js';
import { Facts, Section } from '../ui/section.js';

/** What remains now, counted from what was told last. */
function useRemaining() {
  const { remainingMs } = set.screenSaver.value;
  const [, tick] = useState(0);
  useEffect(() => {
    const timer = setInterval(() => tick((count) => count + 1), 1000);
    return () => clearInterval(timer);
  }, []);
  if (remainingMs === null || remainingMs === undefined) {
    return null;
  }
  return Math.max(0, remainingMs - (performance.now() - screenSaverToldAt.value));
}

function when(remaining, on) {
  if (on) {
    return 'on';
  }
  return remaining === null ? 'never' : `in ${minutes(remaining)}`;
}

export function ScreenSaverSection() {
  const saver = set.screenSaver.value;
  return saver && html`<${Loaded} saver=${saver} />`;
}

function Loaded({ saver }) {
  const remaining = useRemaining();
  const { owner, timeoutSeconds, resets, inputs, on } = saver;
  const forward = (ms) => ask('clock.advance', { ms });
  return html`<${Section} name="screenSaver" title="Screen saver" note=${when(remaining, on)}>
    <${Facts}
      entries=${[
        ['Owner', owner === 'DEFAULT' ? 'the set (DEFAULT)' : owner],
        ['Comes on', when(remaining, on)],
        ['Time-out', timeoutSeconds === 0 ? 'none' : `${timeoutSeconds} s`],
        ['Reset by applications', resets],
        ['Reset by keys', inputs],
      ]}
    />
    <p
      class="button-row"
      role="group"
      aria-label="Move the set's clock"
      title="The set's clock only: a page that holds it off does so by real time"
    >
      <span class="muted">Move the clock</span>
      <${Button} onClick=${() => forward(30000)}>+30 s<//>
      <${Button} onClick=${() => forward(300000)}>+5 min<//>
      <${Button}
        disabled=${remaining === null || on}
        onClick=${() => forward(Math.ceil(remaining) + 1000)}
        >Until it is on<//
      >
    </p>
    <p class="button-row">
      <${Button} onClick=${() => ask('screenSaver.activity')}>Start the wait again<//>
    </p>
  <//>`;
}
