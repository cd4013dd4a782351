// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Methods about the input method: its recommended words and its place on the screen.

import { native, OrvaneManager, type_, validator_ } from './preamble.js';
import { OrvaneAlign, recommendedWordsTypeValues, resolutionNames } from './enumerations.js';
import { operationError, succeeded } from './native_calls.js';
import { getBaseSize, getPx } from './ime_position.js';

OrvaneManager.prototype.setIMERecommendedWordsType = function setIMERecommendedWordsType(Type) {
  validator_.validateArgsStrict(arguments, [
    { name: 'Type', type: type_.ENUM, values: recommendedWordsTypeValues },
  ]);
  const ret = native.sendRuntimeMessage('dravelt://orvane/setIMERecommendedType', Type);
  if (!ret) {
    throw operationError('setIMERecommendedType');
  }
  return ret;
};

OrvaneManager.prototype.setIMERecommendedWords = function setIMERecommendedWords(words) {
  validator_.validateArgsStrict(arguments, [
    { name: 'words', type: type_.ARRAY, values: type_.STRING },
  ]);
  const ret = native.sendRuntimeMessage('dravelt://orvane/setIMERecommendedWords', words.join(','));
  if (!ret) {
    throw operationError('setIMERecommendedWords');
  }
  return ret;
};

// Pixels of a position along one axis; the fallback where the page gives none.
function positionOr(fallback, value, resolution, axis) {
  return typeof value === 'string' && value !== '' ? getPx(value, resolution, axis) : fallback;
}

OrvaneManager.prototype.setIMEPosition = function setIMEPosition(x, y, align) {
  validator_.validateArgsStrict(arguments, [
    { name: 'x', type: type_.STRING, optional: true, nullable: true },
    { name: 'y', type: type_.STRING, optional: true, nullable: true },
    {
      name: 'align',
      type: type_.ENUM,
      values: Object.keys(OrvaneAlign),
      optional: true,
      nullable: true,
    },
  ]);
  const ret = succeeded(native.callSync('OrvaneManager_getIMEResolution'));
  const resolution = resolutionNames[native.getResultObject(ret)];
  const base = getBaseSize(resolution);
  // Without a position: the middle of the bottom edge.
  const left = positionOr(base.width / 2, x, resolution, 'x');
  const top = positionOr(base.height, y, resolution, 'y');
  const alignment = align ? OrvaneAlign[align] : OrvaneAlign.BOTTOM_CENTER;
  const text = left + ',' + top + ',' + alignment;
  const answer = native.sendRuntimeSyncMessage('dravelt://orvane/setIMEPosition', text);
  if (answer === 'error') {
    throw operationError('setIMEPosition');
  }
  if (answer === 'notsupportederror') {
    throw new WebAPIException(
      WebAPIException.NOT_SUPPORTED_ERR,
      'IME Position setting is not possible. IME Style is not dynamic.'
    );
  }
  return true;
};
