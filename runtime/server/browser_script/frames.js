// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Where a page stands among its frames, and which element of them has the focus.

// The window outside this one, if it is of the application too; null otherwise. The simulator's
// page is of another origin, so that reading its document is refused.
export function outerPage(page) {
  try {
    return page.parent !== page && page.parent.document ? page.parent : null;
  } catch (error) {
    return null;
  }
}

export const isTopPage = () => outerPage(window) === null;

// Whether keys reach this page, if they reach the application: every page outside it has the focus
// on the frame that leads here.
export function isOnFocusPath() {
  for (let page = window, outer = outerPage(page); outer !== null;) {
    if (outer.document.activeElement !== page.frameElement) {
      return false;
    }
    page = outer;
    outer = outerPage(page);
  }
  return true;
}

function innerDocument(element) {
  try {
    return element.contentDocument ?? null;
  } catch (error) {
    return null;
  }
}

// The element that a key goes to: through frames of the application's origin and open shadow trees.
// A document without a focused element gives its body.
export function focusedElement(from = document) {
  let element = from.activeElement ?? from.body ?? from.documentElement;
  for (;;) {
    const inner = innerDocument(element)?.activeElement ?? element?.shadowRoot?.activeElement;
    if (!inner) {
      return element;
    }
    element = inner;
  }
}

const textTypes = new Set([
  'date',
  'datetime-local',
  'email',
  'month',
  'number',
  'password',
  'search',
  'tel',
  'text',
  'time',
  'url',
  'week',
]);

// Whether text can be typed into the element. Elements of frames are of other classes, so that
// names are compared.
export function isEditable(element) {
  if (!element || element.disabled || element.readOnly) {
    return false;
  }
  const name = element.localName;
  return (
    name === 'textarea' ||
    (name === 'input' && textTypes.has(element.type)) ||
    element.isContentEditable === true
  );
}
