// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What a browser does for a key that the page leaves to it.

import { isEditable } from './frames.js';
import { dispatchPlain, enterInField, typeText } from './typing.js';

const scrollStep = 40; // CSS pixels, as a browser scrolls for an arrow key

const clickedByEnter =
  'a[href], area[href], button, summary, ' +
  'input:is([type=button], [type=submit], [type=reset], [type=image], [type=color], [type=file])';

function onEnter(element) {
  if (element.matches?.(clickedByEnter)) {
    element.click();
  } else if (isEditable(element)) {
    enterInField(element);
  } else if (element.form && element.localName === 'input') {
    element.form.requestSubmit();
  }
}

// The element that scrolls in the direction, from `element` outwards; null if none has room.
function scrollerFor(element, axis, sign) {
  const [position, size, room, overflow] =
    axis === 'x'
      ? ['scrollLeft', 'clientWidth', 'scrollWidth', 'overflowX']
      : ['scrollTop', 'clientHeight', 'scrollHeight', 'overflowY'];
  const { documentElement, defaultView } = element.ownerDocument;
  for (let outer = element; outer; outer = outer.parentElement) {
    const style = defaultView.getComputedStyle(outer)[overflow];
    const scrolls =
      outer === documentElement ? style !== 'hidden' : style === 'auto' || style === 'scroll';
    const left = sign < 0 ? outer[position] : outer[room] - outer[size] - outer[position];
    if (scrolls && left >= 1) {
      return outer;
    }
  }
  return null;
}

function scroll(element, axis, sign) {
  scrollerFor(element, axis, sign)?.scrollBy(
    axis === 'x' ? sign * scrollStep : 0,
    axis === 'y' ? sign * scrollStep : 0
  );
}

function moveCaret(field, sign) {
  let { selectionStart: start, selectionEnd: end } = field;
  if (start === null) {
    return; // a field whose kind has no caret to ask for
  }
  if (start === end) {
    start = Math.max(0, Math.min(field.value.length, start + sign));
    end = start;
  }
  const place = sign < 0 ? start : end;
  field.setSelectionRange(place, place);
}

function step(element, sign) {
  const before = element.value;
  if (sign > 0) {
    element.stepUp();
  } else {
    element.stepDown();
  }
  if (element.value !== before) {
    dispatchPlain(element, 'input');
    dispatchPlain(element, 'change');
  }
}

function choose(select, sign) {
  let index = select.selectedIndex + sign;
  while (select.options[index]?.disabled) {
    index += sign;
  }
  if (select.options[index]) {
    select.selectedIndex = index;
    dispatchPlain(select, 'input');
    dispatchPlain(select, 'change');
  }
}

function chooseRadio(radio, sign) {
  const root = radio.form ?? radio.ownerDocument;
  const group = [...root.querySelectorAll('input[type=radio]')].filter(
    ({ name, disabled }) => name === radio.name && !disabled
  );
  const next = group[(group.indexOf(radio) + sign + group.length) % group.length];
  next.focus();
  next.click();
}

function onArrow(element, axis, sign) {
  const kind = element.localName === 'input' ? element.type : element.localName;
  const upwards = axis === 'x' ? sign : -sign;
  if (kind === 'range' || (kind === 'number' && axis === 'y')) {
    step(element, upwards);
  } else if (kind === 'select') {
    choose(element, sign);
  } else if (kind === 'radio') {
    chooseRadio(element, sign);
  } else if (isEditable(element) && 'selectionStart' in element) {
    if (axis === 'x') {
      moveCaret(element, sign);
    }
  } else {
    scroll(element, axis, sign);
  }
}

const arrows = {
  ArrowLeft: ['x', -1],
  ArrowRight: ['x', 1],
  ArrowUp: ['y', -1],
  ArrowDown: ['y', 1],
};

// `names` are the event's, see key_names.js; `element` has the focus.
export function actOnKey(names, element) {
  if (names.key === 'Enter') {
    onEnter(element);
  } else if (names.text !== undefined) {
    if (isEditable(element)) {
      typeText(element, names.text);
    }
  } else if (Object.hasOwn(arrows, names.key)) {
    onArrow(element, ...arrows[names.key]);
  }
}
