// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Where things are on the television. The screen is 1920 by 1080 CSS pixels; the set counts in the
// pixels of its panel, which may be twice as many.

export const screenWidth = 1920;
export const screenHeight = 1080;

export const alignNames = [
  'top left',
  'top centre',
  'top right',
  'middle left',
  'middle centre',
  'middle right',
  'bottom left',
  'bottom centre',
  'bottom right',
];

/** The largest scale at which the screen fits. */
export function fittingScale(width, height) {
  return Math.max(0.05, Math.min(width / screenWidth, height / screenHeight));
}

/** From the panel's pixels to the screen's. */
export function ofPanel(panel, x, y) {
  return {
    x: (x * screenWidth) / (panel?.width || screenWidth),
    y: (y * screenHeight) / (panel?.height || screenHeight),
  };
}

/**
 * The left top corner of a box of which the point `align` (0 top left, 1 top centre … 8 bottom
 * right) is at x, y.
 */
export function aligned({ x, y }, align, size) {
  const column = align % 3;
  const row = Math.floor(align / 3);
  return { left: x - (size.width * column) / 2, top: y - (size.height * row) / 2 };
}

const corners = [null, [0, 0], [1, 0], [0, 1], [1, 1]];

/**
 * The rectangle and scale of an application's window: the whole screen, one of its quarters (1 top
 * left, 2 top right, 3 bottom left, 4 bottom right), or the whole size from any corner.
 */
export function windowPlace(panel, window) {
  const corner = corners[window?.quarterPosition ?? 0];
  if (corner) {
    const [column, row] = corner;
    return { left: (column * screenWidth) / 2, top: (row * screenHeight) / 2, scale: 0.5 };
  }
  if (window?.position) {
    const { x, y } = ofPanel(panel, window.position[0], window.position[1]);
    return { left: x, top: y, scale: 1 };
  }
  return { left: 0, top: 0, scale: 1 };
}
