// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// One key of the remote control. Held for half a second, or clicked with Shift, it is a long press.

import { html, useRef, useState } from '../view.js';
import { Icon } from '../ui/icons.js';
import { set } from '../state/set.js';
import { appId } from '../state/run.js';
import { describeKey } from './key_table.js';
import { pressKey, pressed } from './press.js';
import { shortcutOf } from './shortcuts.js';

const longMs = 500;

/** Whether a grab of the application under test gives it the key now. */
function isHeld({ mode }) {
  switch (mode) {
    case 'registered':
      return true;
    case 'topmost':
      return set.windows.value?.stack[0] === appId.value;
    default:
      return set.focused.value === appId.value;
  }
}

/** Whether the application under test would get the key now, as far as can be told from here. */
function reaches(key) {
  if (key.mandatory) {
    return set.focused.value === appId.value;
  }
  return (set.keyGrabs.value ?? []).some(
    (grab) => grab.app === appId.value && grab.key === key.name && isHeld(grab)
  );
}

function title(key, { scriptName }) {
  const shortcut = shortcutOf(key.name);
  const grab = (set.keyGrabs.value ?? []).find((each) => each.key === key.name);
  return [
    `${scriptName} · ${key.name} · keyCode ${key.keyCode}`,
    key.mandatory && 'every application receives it while it has the focus',
    grab && `registered by ${grab.app} (${grab.mode})`,
    !key.mandatory && !grab && 'not registered',
    shortcut && `keyboard: ${shortcut}`,
    'hold for a long press',
  ]
    .filter(Boolean)
    .join('\n');
}

/** The label, and what is written on the key where that is something else. */
function spoken(label, text) {
  return text && !label.toLowerCase().includes(text.toLowerCase()) ? `${text}: ${label}` : label;
}

/** Press, hold and release of a pointer or of the keyboard, as one press. */
function useHold(name) {
  const timer = useRef(0);
  const [held, setHeld] = useState(false);
  const stop = () => {
    clearTimeout(timer.current);
    timer.current = 0;
    setHeld(false);
  };
  const start = (event) => {
    if (event.button > 0) {
      return;
    }
    setHeld(true);
    timer.current = setTimeout(() => {
      stop();
      timer.current = -1; // the click that follows was this
      pressKey(name, { long: true });
    }, longMs);
  };
  const onClick = (event) => {
    const wasLong = timer.current === -1;
    stop();
    if (!wasLong) {
      pressKey(name, { long: event.shiftKey });
    }
  };
  return { held, onPointerDown: start, onPointerLeave: stop, onPointerCancel: stop, onClick };
}

/**
 * @param {{name: string, label?: string, icon?: string, text?: string, className?: string}} props
 *        `text` is what is written on it instead of the label
 */
export function KeyButton({ name, icon, text, className = '' }) {
  const { held, ...handlers } = useHold(name);
  const key = set.keys.value?.find((each) => each.name === name);
  if (!key) {
    return null;
  }
  const described = describeKey(name);
  const classes = [
    'key',
    className,
    reaches(key) && 'key-reaches',
    held && 'key-held',
    pressed.value === name && 'key-pressed',
  ];
  return html`<button
    type="button"
    class=${classes.filter(Boolean).join(' ')}
    data-key=${name}
    aria-label=${spoken(described.label, text)}
    title=${title(key, described)}
    ...${handlers}
  >
    ${icon ? html`<${Icon} name=${icon} />` : (text ?? described.label)}
  </button>`;
}
