// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The set's own volume: its keys change it when no application took them, and a bar shows it for a
// while.

import { html, signal } from '../view.js';
import { Icon } from '../ui/icons.js';

const shownMs = 2500;
const steps = { XF86AudioRaiseVolume: 1, XF86AudioLowerVolume: -1 };

export const volume = signal({ level: 17, muted: false, shown: false });

let timer = 0;

/**
 * Whether the key is left to the set, which changes its volume.
 * @param {{key_name: string, delivered: boolean}} event of a key
 */
export function isForVolume({ key_name: name, delivered }) {
  return !delivered && (name in steps || name === 'XF86AudioMute');
}

export function volumeKey(event) {
  if (!isForVolume(event)) {
    return;
  }
  const { key_name: name } = event;
  const { level, muted } = volume.value;
  volume.value =
    name === 'XF86AudioMute'
      ? { level, muted: !muted, shown: true }
      : { level: Math.max(0, Math.min(100, level + steps[name])), muted: false, shown: true };
  clearTimeout(timer);
  timer = setTimeout(() => (volume.value = { ...volume.value, shown: false }), shownMs);
}

export function VolumeBar() {
  const { level, muted, shown } = volume.value;
  if (!shown) {
    return null;
  }
  return html`<div
    class="volume-bar"
    role="meter"
    aria-label="Volume of the set"
    aria-valuemin="0"
    aria-valuemax="100"
    aria-valuenow=${muted ? 0 : level}
    aria-valuetext=${muted ? 'muted' : String(level)}
  >
    <${Icon} name=${muted ? 'mute' : 'volume'} size=${44} />
    <span class="volume-track"><span style=${{ width: `${muted ? 0 : level}%` }}></span></span>
    <span class="volume-level">${muted ? 'Mute' : level}</span>
  </div>`;
}
