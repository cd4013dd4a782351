// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Text from the set's on-screen keyboard, typed into the focused field. The browser's own editing
// commands do it where they can: they keep the caret, the length limit and the undo list, and make
// the events that a person's typing makes, which is what frameworks with controlled fields look at.

import { dispatch } from './builtins.js';
import { focusedElement, isEditable } from './frames.js';

const ownEdit = Document.prototype.execCommand;

// In the field's own document; `field` has the focus there. Makes the input event, but not the one
// before it.
function edit(field, command, text) {
  try {
    return ownEdit.call(field.ownerDocument, command, false, text);
  } catch (error) {
    return false;
  }
}

export function dispatchPlain(element, type) {
  const { Event } = element.ownerDocument.defaultView;
  dispatch(element, new Event(type, { bubbles: true, composed: type === 'input' }));
}

function inputEvent(type, field, inputType, data) {
  const view = field.ownerDocument.defaultView;
  return new view.InputEvent(type, {
    inputType,
    data,
    view,
    bubbles: true,
    composed: true,
    cancelable: type === 'beforeinput',
  });
}

// The value goes in by the element's own setter, not by one that a framework has put on the element
// to see what the page itself assigns.
function setValue(field, value) {
  const { prototype } =
    field.ownerDocument.defaultView[
      field.localName === 'textarea' ? 'HTMLTextAreaElement' : 'HTMLInputElement'
    ];
  Object.getOwnPropertyDescriptor(prototype, 'value').set.call(field, value);
}

// For fields that the browser's commands do not edit: `change(value, start, end)` gives the new
// text and the caret's place in it.
function replaceValue(field, inputType, data, change) {
  if (!('value' in field)) {
    return;
  }
  const { value } = field;
  const start = field.selectionStart ?? value.length;
  const [text, caret] = change(value, start, field.selectionEnd ?? value.length);
  setValue(field, text);
  if (field.selectionStart !== null) {
    field.setSelectionRange(caret, caret);
  }
  dispatch(field, inputEvent('input', field, inputType, data));
}

// Whether the page lets the change happen.
function announce(field, inputType, data) {
  return dispatch(field, inputEvent('beforeinput', field, inputType, data));
}

export function typeText(field, text) {
  if (announce(field, 'insertText', text) && !edit(field, 'insertText', text)) {
    replaceValue(field, 'insertText', text, (value, start, end) => [
      value.slice(0, start) + text + value.slice(end),
      start + text.length,
    ]);
  }
}

function erase(field) {
  const type = 'deleteContentBackward';
  if (announce(field, type, null) && !edit(field, 'delete')) {
    replaceValue(field, type, null, (value, start, end) => {
      const from = start === end ? Math.max(0, start - 1) : start;
      return [value.slice(0, from) + value.slice(end), from];
    });
  }
}

function clear(field) {
  const type = 'deleteContent';
  if (announce(field, type, null) && !(edit(field, 'selectAll') && edit(field, 'delete'))) {
    replaceValue(field, type, null, () => ['', 0]);
  }
}

// Enter in a field: a new line where there can be one, otherwise the form is sent, as a browser
// does it: by its button, or when the field is its only one.
export function enterInField(field) {
  if (field.localName !== 'input') {
    if (announce(field, 'insertLineBreak', null) && !edit(field, 'insertLineBreak')) {
      typeText(field, '\n');
    }
    return;
  }
  const { form } = field;
  dispatchPlain(field, 'change');
  if (!form) {
    return;
  }
  const elements = [...form.elements];
  const button = elements.find(({ type }) => type === 'submit' || type === 'image');
  if (button) {
    if (!button.disabled) {
      button.click();
    }
  } else if (elements.filter((element) => element.localName === 'input').length === 1) {
    form.requestSubmit();
  }
}

const edits = { text: typeText, backspace: erase, clear };

// A message { op: "text" | "backspace" | "enter" | "clear", text }. `pressEnter` sends the key,
// whose default action enters the field.
export function enterText({ op, text }, pressEnter) {
  if (op === 'enter') {
    pressEnter();
    return;
  }
  const field = focusedElement();
  if (isEditable(field)) {
    edits[op]?.(field, text);
  }
}
