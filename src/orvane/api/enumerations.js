// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The enumerations. The first four are members of the page's object (see export.js). What they
// allow is read here once: a page that changes one does not change what is let through.

import { validatorType } from './preamble.js';

export const OrvaneTarget = { CONFIG_LAST_SOURCE: 0 };

export const OrvaneAction = { CONFIG_LAUNCH: 0 };

export const OrvaneScreenSaverState = { SCREEN_SAVER_OFF: 0, SCREEN_SAVER_ON: 1 };

export const OrvaneRecommendedWordsType = {
  RECOMMENDED_WORDS_DISABLE: 0,
  RECOMMENDED_WORDS_ENABLE: 1,
};

const OrvaneResource = { CPU: 'CPU', MEMORY: 'MEMORY' };

export const OrvaneWindowStackMode = { NONE: 'NONE', BELOW: 'BELOW', ABOVE: 'ABOVE' };

export const OrvaneAlign = {
  TOP_LEFT: 0,
  TOP_CENTER: 1,
  TOP_RIGHT: 2,
  MIDDLE_LEFT: 3,
  MIDDLE_CENTER: 4,
  MIDDLE_RIGHT: 5,
  BOTTOM_LEFT: 6,
  BOTTOM_CENTER: 7,
  BOTTOM_RIGHT: 8,
};

// The numbers are sent inside a text, so they are texts.
export const OrvaneKeyGrabMode = { TOPMOST: '2', REGISTERED: '5' };

export const resolutionNames = { 0: 'FMS_IME_RESOLUTION_2K', 1: 'FMS_IME_RESOLUTION_4K' };

export const targetValues = validatorType.getValues(OrvaneTarget);
export const actionValues = validatorType.getValues(OrvaneAction);
export const screenSaverStateValues = validatorType.getValues(OrvaneScreenSaverState);
export const recommendedWordsTypeValues = validatorType.getValues(OrvaneRecommendedWordsType);
export const resourceValues = validatorType.getValues(OrvaneResource);
