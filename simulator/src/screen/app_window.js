// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The application's page, at its true size, in the place that its window has on the set.

import { html, useEffect, useRef } from '../view.js';
import { appId, info, startUrl } from '../state/run.js';
import { set } from '../state/set.js';
import { screenHeight, screenWidth, windowPlace } from './geometry.js';
import { frameHasFocus } from './focus.js';

/** The frame swallows its own focus events; what is seen here is that the window lost its own. */
function useFrameFocus(frame) {
  useEffect(() => {
    const look = () => (frameHasFocus.value = document.activeElement === frame.current);
    const soon = () => setTimeout(look);
    window.addEventListener('blur', soon);
    window.addEventListener('focus', soon);
    document.addEventListener('focusin', look);
    return () => {
      window.removeEventListener('blur', soon);
      window.removeEventListener('focus', soon);
      document.removeEventListener('focusin', look);
    };
  }, []);
}

export function AppWindow() {
  const frame = useRef(null);
  useFrameFocus(frame);
  const ownWindow = set.windows.value?.list.find((each) => each.app === appId.value);
  const { left, top, scale } = windowPlace(set.panel.value, ownWindow);
  return html`<div
    class=${`app-window ${left || top || scale !== 1 ? 'app-window-moved' : ''}`}
    style=${{
      width: `${screenWidth}px`,
      height: `${screenHeight}px`,
      transform: `translate(${left}px, ${top}px) scale(${scale})`,
    }}
  >
    <iframe
      ref=${frame}
      class="app-frame"
      title=${`The application ${info.value?.app?.name || appId.value}`}
      src=${startUrl.value}
      allow="cross-origin-isolated; autoplay; fullscreen"
    ></iframe>
  </div>`;
}
