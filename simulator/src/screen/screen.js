// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The television: the application's page and, over it, the set's own pictures, in true 16:9.

import { html, useEffect, useLayoutEffect, useRef, useState } from '../view.js';
import { startUrl } from '../state/run.js';
import { set } from '../state/set.js';
import { keyHistory } from '../state/streams.js';
import { AppWindow } from './app_window.js';
import { Curtains } from './curtains.js';
import { frameHasFocus } from './focus.js';
import { fittingScale, screenHeight, screenWidth } from './geometry.js';
import { OnScreenKeyboard } from './keyboard.js';
import { LastSource } from './last_source.js';
import { ScreenSaver } from './screen_saver.js';
import { ScreenStatus } from './screen_status.js';
import { VolumeBar, volumeKey } from './volume.js';

const bezel = 10;

function useScale(room) {
  const [scale, setScale] = useState(0.3);
  useLayoutEffect(() => {
    const observer = new ResizeObserver(([{ contentRect }]) => {
      setScale(fittingScale(contentRect.width - 2 * bezel, contentRect.height - 2 * bezel));
    });
    observer.observe(room.current);
    return () => observer.disconnect();
  }, []);
  return scale;
}

function useVolumeKeys() {
  const newest = keyHistory.value[0];
  const seen = useRef(newest?.number ?? 0);
  useEffect(() => {
    for (const event of keyHistory.value) {
      if (event.number > seen.current) {
        volumeKey(event);
      }
    }
    seen.current = newest?.number ?? seen.current;
  }, [newest]);
}

function Picture() {
  return html`<div class="backdrop" aria-hidden="true"></div>
    ${startUrl.value ? html`<${AppWindow} />` : html`<p class="waiting">Waiting for the set…</p>`}
    <${Curtains} />
    <${OnScreenKeyboard} />
    <${VolumeBar} />
    <${LastSource} />
    <${ScreenSaver} />`;
}

export function Screen() {
  const room = useRef(null);
  const scale = useScale(room);
  useVolumeKeys();
  const typing = frameHasFocus.value ? 'television-typing' : '';
  return html`<section class="stage" aria-labelledby="screen-title">
    <h2 id="screen-title" class="visually-hidden">Screen of the set</h2>
    <div class="stage-room" ref=${room}>
      <div
        class=${`television ${typing}`}
        style=${{ width: `${screenWidth * scale}px`, height: `${screenHeight * scale}px` }}
        tabindex="0"
        role="group"
        aria-label="Television; keys of the keyboard are keys of the remote control here"
        data-keys="set"
      >
        <div
          class="screen"
          style=${{
            width: `${screenWidth}px`,
            height: `${screenHeight}px`,
            transform: `scale(${scale})`,
          }}
        >
          <${Picture} />
        </div>
      </div>
    </div>
    <${ScreenStatus} scale=${scale} panel=${set.panel.value} />
  </section>`;
}
