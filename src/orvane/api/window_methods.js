// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Methods about the application's window.

import { native, OrvaneManager, type_, validator_ } from './preamble.js';
import { OrvaneWindowStackMode } from './enumerations.js';
import { operationError, optionalCallback, succeeded } from './native_calls.js';

// Quarter positions run from 0 up to this, which is none any more.
const quarterPositionEnd = 5;

OrvaneManager.prototype.setEpopAppWindow = function setEpopAppWindow(
  epopPosition,
  anyPositionMode
) {
  validator_.validateArgsStrict(arguments, [
    { name: 'epopPosition', type: type_.LONG },
    { name: 'anyPositionMode', type: type_.BOOLEAN, optional: true, nullable: true },
  ]);
  const anyPosition = anyPositionMode === true;
  if (!anyPosition && !(epopPosition >= 0 && epopPosition < quarterPositionEnd)) {
    throw new WebAPIException(
      WebAPIException.QM_INVALID_VALUES_ERR,
      'Invalid value passed for epopPosition parameter'
    );
  }
  console.log(
    'setEpopAppWindow post message position:' + epopPosition + ' anypositionmode:' + anyPosition
  );
  succeeded(native.callSync('OrvaneManager_setEpopAppWindow', {}));
  const result = anyPosition
    ? widget.move(epopPosition, 0)
    : widget.setQuarterPosition(epopPosition);
  if (result === 'success') {
    console.log('[orvane.js] setEpopAppWindow message data ' + true);
    return true;
  }
  console.log('[orvane.js] setEpopAppWindow error ' + WebAPIException.QM_UNKNOWN_ERR);
  throw new WebAPIException(WebAPIException.QM_UNKNOWN_ERR, 'Unknown system error occurred');
};

OrvaneManager.prototype.setAppFocus = function setAppFocus(state) {
  validator_.validateArgsStrict(arguments, [{ name: 'state', type: type_.BOOLEAN }]);
  if (native.sendRuntimeSyncMessage('tizen://setFocus', state ? 'true' : 'false') !== 'success') {
    throw operationError('setAppFocus');
  }
};

OrvaneManager.prototype.setWindowStackMode = function setWindowStackMode(mode) {
  validator_.validateArgsStrict(arguments, [
    { name: 'mode', type: type_.ENUM, values: Object.keys(OrvaneWindowStackMode) },
  ]);
  const answer = native.sendRuntimeSyncMessage(
    'tizen://setWindowStackMode',
    OrvaneWindowStackMode[mode]
  );
  if (answer !== 'success') {
    throw operationError('setWindowStackMode');
  }
};

// A member of a hint, which must be a text. Read once: a getter may answer differently next time.
function hintText(auxhint, member) {
  const text = auxhint[member];
  if (typeof text !== 'string') {
    throw new WebAPIException(
      WebAPIException.TYPE_MISMATCH_ERR,
      'auxhint ' + member + ' should be string type'
    );
  }
  return text;
}

OrvaneManager.prototype.setAuxHint = function setAuxHint(auxhint, onsuccess, onerror) {
  validator_.validateArgsStrict(arguments, [
    { name: 'auxhint', type: type_.DICTIONARY },
    optionalCallback('onsuccess'),
    optionalCallback('onerror'),
  ]);
  const text = hintText(auxhint, 'key') + ',' + hintText(auxhint, 'value');
  succeeded(native.callSync('OrvaneManager_checkPlatformLevelPrivilege', {}));
  native.sendRuntimeAsyncMessage('dravelt://orvane/setAuxHint', text, (ret) => {
    if (native.isFailure(ret)) {
      console.log('[Orvane] setAuxHint errorCallback');
      native.callIfPossible(onerror, native.getErrorObject(ret));
      return;
    }
    console.log('[Orvane] setAuxHint successCallback');
    native.callIfPossible(onsuccess);
  });
};
