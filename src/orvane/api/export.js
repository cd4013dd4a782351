// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the page gets, and where the build begins: the script is these modules in this order.

import { OrvaneManager } from './preamble.js';
import './key_tables.js';
import {
  OrvaneAction,
  OrvaneRecommendedWordsType,
  OrvaneScreenSaverState,
  OrvaneTarget,
} from './enumerations.js';
import './device_methods.js';
import './key_methods.js';
import './ime_methods.js';
import './window_methods.js';

OrvaneManager.prototype.OrvaneTarget = OrvaneTarget;
OrvaneManager.prototype.OrvaneAction = OrvaneAction;
OrvaneManager.prototype.OrvaneScreenSaverState = OrvaneScreenSaverState;
OrvaneManager.prototype.OrvaneRecommendedWordsType = OrvaneRecommendedWordsType;

exports = new OrvaneManager();
