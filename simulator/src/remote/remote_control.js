// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The remote control: the keys of a real one, every other key of the set below them.

import { html } from '../view.js';
import { set } from '../state/set.js';
import { AllKeys } from './all_keys.js';
import { KeyButton } from './key_button.js';
import { KeyHistory } from './history.js';

const key = (name, props = {}) => html`<${KeyButton} name=${name} ...${props} />`;

function Rocker({ label, up, down }) {
  return html`<div class="rocker" role="group" aria-label=${label}>
    ${key(up, { icon: 'plus' })}<span class="rocker-label" aria-hidden="true">${label}</span>
    ${key(down, { icon: 'minus' })}
  </div>`;
}

function DirectionPad() {
  return html`<div class="pad" role="group" aria-label="Directions">
    ${key('Up', { icon: 'up', className: 'pad-up' })}
    ${key('Left', { icon: 'left', className: 'pad-left' })}
    ${key('Return', { text: 'OK', className: 'pad-ok' })}
    ${key('Right', { icon: 'right', className: 'pad-right' })}
    ${key('Down', { icon: 'down', className: 'pad-down' })}
  </div>`;
}

function Body() {
  return html`<div class="remote-body">
    <div class="key-row">
      ${key('XF86PowerOff', { icon: 'power', className: 'key-power' })}
      ${key('XF86Display', { icon: 'source' })} ${key('XF86Search', { icon: 'search' })}
      ${key('XF86AudioMute', { icon: 'mute' })}
    </div>
    <${DirectionPad} />
    <div class="key-row">
      ${key('XF86Back', { icon: 'back' })} ${key('XF86Home', { icon: 'home' })}
      ${key('XF86Exit', { text: 'Exit' })}
    </div>
    <div class="key-row key-colours" role="group" aria-label="Colours">
      ${key('XF86Red', { text: '', className: 'key-red' })}
      ${key('XF86Green', { text: '', className: 'key-green' })}
      ${key('XF86Yellow', { text: '', className: 'key-yellow' })}
      ${key('XF86Blue', { text: '', className: 'key-blue' })}
    </div>
    <div class="rockers">
      <${Rocker} label="VOL" up="XF86AudioRaiseVolume" down="XF86AudioLowerVolume" />
      <div class="key-column">
        ${key('XF86SysMenu')} ${key('XF86SimpleMenu')} ${key('XF86Info')} ${key('XF86ChannelGuide')}
      </div>
      <${Rocker} label="CH" up="XF86RaiseChannel" down="XF86LowerChannel" />
    </div>
    <div class="key-row key-media" role="group" aria-label="Playback">
      ${key('XF86PreviousChapter', { icon: 'previous' })}
      ${key('XF86AudioRewind', { icon: 'rewind' })} ${key('XF86PlayBack', { icon: 'playPause' })}
      ${key('XF86AudioNext', { icon: 'forward' })} ${key('XF86NextChapter', { icon: 'next' })}
    </div>
    <div class="key-row key-media" role="group" aria-label="Play, pause, stop and record">
      ${key('XF86AudioPlay', { icon: 'play' })} ${key('XF86AudioPause', { icon: 'pause' })}
      ${key('XF86AudioStop', { icon: 'stop' })} ${key('XF86AudioRecord', { icon: 'record' })}
    </div>
    <div class="digits" role="group" aria-label="Digits">
      ${Array.from('123456789', (digit) => key(digit))} ${key('minus')} ${key('0')}
      ${key('XF86PreviousChannel', { text: 'PRE-CH' })}
    </div>
  </div>`;
}

export function RemoteControl() {
  return html`<aside class="remote" aria-labelledby="remote-title">
    <div class="remote-keys" data-keys="set">
      <h2 id="remote-title" class="visually-hidden">Remote control</h2>
      ${
        set.keys.value === null
          ? html`<div class="remote-body remote-waiting" aria-busy="true"></div>`
          : html`<${Body} /><${AllKeys} />`
      }
    </div>
    <${KeyHistory} />
  </aside>`;
}
