// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The enumerations. The first four are members of the page's object (see export.js). What they
// allow is read here once: a page that changes one does not change what is let through.

const OrvaneTarget = { CONFIG_LAST_SOURCE: 0 };

const OrvaneAction = { CONFIG_LAUNCH: 0 };

const OrvaneScreenSaverState = { SCREEN_SAVER_OFF: 0, SCREEN_SAVER_ON: 1 };

const OrvaneRecommendedWordsType = { RECOMMENDED_WORDS_DISABLE: 0, RECOMMENDED_WORDS_ENABLE: 1 };

const OrvaneResource = { CPU: 'CPU', MEMORY: 'MEMORY' };

const OrvaneWindowStackMode = { NONE: 'NONE', BELOW: 'BELOW', ABOVE: 'ABOVE' };

const OrvaneAlign = {
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
const OrvaneKeyGrabMode = { TOPMOST: '2', REGISTERED: '5' };

const resolutionNames = { 0: 'FMS_IME_RESOLUTION_2K', 1: 'FMS_IME_RESOLUTION_4K' };

const targetValues = validatorType.getValues(OrvaneTarget);
const actionValues = validatorType.getValues(OrvaneAction);
const screenSaverStateValues = validatorType.getValues(OrvaneScreenSaverState);
const recommendedWordsTypeValues = validatorType.getValues(OrvaneRecommendedWordsType);
const resourceValues = validatorType.getValues(OrvaneResource);
