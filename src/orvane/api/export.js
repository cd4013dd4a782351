// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the page gets.

OrvaneManager.prototype.OrvaneTarget = OrvaneTarget;
OrvaneManager.prototype.OrvaneAction = OrvaneAction;
OrvaneManager.prototype.OrvaneScreenSaverState = OrvaneScreenSaverState;
OrvaneManager.prototype.OrvaneRecommendedWordsType = OrvaneRecommendedWordsType;

exports = new OrvaneManager();
