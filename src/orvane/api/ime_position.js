// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Where an input method stands: from "8px" or "12.5%" to pixels of the screen.

export function getBaseSize(resolution) {
  if (resolution === 'FMS_IME_RESOLUTION_4K') {
    return { width: 3840, height: 2160 };
  }
  return { width: 1920, height: 1080 };
}

function isPxValue(value) {
  return /px$/.test(value);
}

function isPercentValue(value) {
  return /%$/.test(value);
}

// The number of a text: whole pixels, or a percentage with at most one decimal digit.
function parseValue(value) {
  const match = /(^(\d+(\.\d)?)%$)|(^(\d+)px$)/.exec(value);
  if (!match) {
    throw new WebAPIException(
      WebAPIException.QM_INVALID_VALUES_ERR,
      'Invalid input format. Please enter px or %.'
    );
  }
  return isPxValue(value) ? parseInt(match[5], 10) : parseFloat(match[2]);
}

// baseSize is the length of an axis, a number: it has no width, so pixels stay as they are at every
// resolution. Pages are laid out for that.
function calculatePxValue(numberValue, baseSize) {
  return baseSize.width === 3840 ? numberValue * 2 : numberValue;
}

function calculatePercentValue(numberValue, baseSize) {
  return Math.floor((numberValue / 100) * baseSize);
}

export function getPx(value, resolution, axis) {
  const base = getBaseSize(resolution);
  const numberValue = parseValue(value);
  const size = axis === 'x' ? base.width : base.height;
  if (isPxValue(value)) {
    return calculatePxValue(numberValue, size);
  }
  if (isPercentValue(value)) {
    return calculatePercentValue(numberValue, size);
  }
  throw new WebAPIException(
    WebAPIException.QM_INVALID_VALUES_ERR,
    'Please make sure input is valid (e.g. "8px", "8%").'
  );
}
