// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The set's on-screen keyboard: where setIMEPosition put it, with the words that the application
// recommends. What is typed goes into the field of the page that has the focus.

import { html, signal, useLayoutEffect, useRef, useState } from '../view.js';
import { isEditing } from '../state/run.js';
import { set } from '../state/set.js';
import { Icon } from '../ui/icons.js';
import { aligned, alignNames, ofPanel, screenHeight, screenWidth } from './geometry.js';
import { keyboardRows } from './keyboard_layout.js';
import { startTyping, typeKey, typeText, typeWord } from './typing.js';

export const keyboardSize = { width: 1060, height: 500 };
const wordsHeight = 76;

/** null: shown while a field is edited; true and false: as a person asked, until that changes. */
export const keyboardWanted = signal(null);

export function keyboardShown() {
  return keyboardWanted.value ?? isEditing.value;
}

/** Where the keyboard is, in pixels of the screen. */
export function keyboardPlace(inputMethod, panel, size = keyboardSize) {
  const { positioned, x, y, align } = inputMethod;
  const anchor = positioned ? ofPanel(panel, x, y) : { x: screenWidth / 2, y: screenHeight - 24 };
  return { ...aligned(anchor, positioned ? align : 7, size), anchor };
}

const actions = {
  text: (label, { page, setPage }) => {
    typeText(label);
    if (page === 'upper') {
      setPage('lower');
    }
  },
  space: () => typeText(' '),
  backspace: () => typeKey('backspace'),
  enter: () => typeKey('enter'),
  clear: () => typeKey('clear'),
  hide: () => (keyboardWanted.value = false),
  shift: (label, { page, setPage }) => setPage(page === 'upper' ? 'lower' : 'upper'),
  symbols: (label, { page, setPage }) => setPage(page === 'symbols' ? 'lower' : 'symbols'),
};

function Words() {
  const { recommendedWords } = set.inputMethod.value;
  return html`<div class="ime-words" role="group" aria-label="Recommended words">
    ${recommendedWords.map(
      (word) => html`<button type="button" onClick=${() => typeWord(word)}>${word}</button>`
    )}
  </div>`;
}

/** Arrow keys go from key to key; the row is a row on the screen. */
function moveFocus(event, element) {
  const steps = { ArrowLeft: [0, -1], ArrowRight: [0, 1], ArrowUp: [-1, 0], ArrowDown: [1, 0] };
  const step = steps[event.key];
  if (!step) {
    return;
  }
  event.preventDefault();
  const rows = [...element.querySelectorAll('.ime-row, .ime-words')];
  const rowAt = rows.findIndex((row) => row.contains(event.target));
  const columnAt = [...rows[rowAt].children].indexOf(event.target);
  const row = rows[Math.max(0, Math.min(rows.length - 1, rowAt + step[0]))];
  const keys = row.children;
  const column = step[0]
    ? Math.round((columnAt / Math.max(1, rows[rowAt].children.length - 1)) * (keys.length - 1))
    : columnAt + step[1];
  keys[Math.max(0, Math.min(keys.length - 1, column))]?.focus();
}

function pixels(sizes) {
  return Object.fromEntries(Object.entries(sizes).map(([name, value]) => [name, `${value}px`]));
}

function placeText({ positioned, x, y, align }) {
  return positioned ? `${x}, ${y} · ${alignNames[align]}` : 'no position given';
}

/** Where it is, and where the text goes when that is nowhere. */
function Caption({ inputMethod, editing }) {
  return html`<p class="ime-caption">
    <${Icon} name="keyboard" size=${26} /> ${placeText(inputMethod)}
    ${!editing && html`<strong role="status">No field of the page has the focus</strong>`}
  </p>`;
}

export function OnScreenKeyboard() {
  const element = useRef(null);
  const [page, setPage] = useState('lower');
  const editing = isEditing.value;
  useLayoutEffect(() => {
    keyboardWanted.value = null;
    startTyping();
  }, [editing]);
  const inputMethod = set.inputMethod.value;
  if (!inputMethod || !keyboardShown()) {
    return null;
  }
  const words = inputMethod.recommendedEnabled; // also while there are none: it does not jump
  const size = { ...keyboardSize, height: keyboardSize.height + (words ? wordsHeight : 0) };
  const { left, top } = keyboardPlace(inputMethod, set.panel.value, size);
  return html`<div
    ref=${element}
    class="ime"
    role="group"
    aria-label="On-screen keyboard"
    style=${pixels({ left, top, ...size })}
    onKeyDown=${(event) => moveFocus(event, element.current)}
    onMouseDown=${(event) => event.preventDefault() /* the field keeps its focus */}
  >
    <${Caption} inputMethod=${inputMethod} editing=${editing} />
    ${words && html`<${Words} />`}
    ${keyboardRows(page).map(
      (row) =>
        html`<div class="ime-row">
          ${row.map(
            ([action, label, columns]) =>
              html`<button
                type="button"
                class=${`ime-key ime-key-${action}`}
                style=${{ flexGrow: columns }}
                onClick=${() => actions[action](label, { page, setPage })}
              >
                ${label}
              </button>`
          )}
        </div>`
    )}
  </div>`;
}
