// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// The application's window and identity, as a page sees them.
export function makeWidget(use, host) {
  const describe = use('describe').value;

  function wrong(name, value) {
    return `${name} must be a finite number, but is ${describe(value)}`;
  }

  const info = host.widgetInfo();
  return {
    id: info.id,
    name: info.name,
    version: info.version,

    // Moves the window's top left corner. Fractions of a pixel are cut off. Returns "success" or
    // what is wrong.
    move(x, y) {
      if (!Number.isFinite(x)) {
        return wrong('x', x);
      }
      return Number.isFinite(y) ? host.moveWindow(x, y) : wrong('y', y);
    },

    // Puts the window into one of the quarter positions 0 to 4. Returns "success" or what is wrong.
    setQuarterPosition(position) {
      return Number.isInteger(position)
        ? host.setQuarterPosition(position)
        : `position must be a whole number, but is ${describe(position)}`;
    },
  };
}
