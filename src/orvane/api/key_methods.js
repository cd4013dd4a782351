// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Methods about remote-control keys.

import { _converter, native, OrvaneManager, type_, validator_ } from './preamble.js';
import { registerkeyRows } from './register_keys.js';
import { OrvaneKeyGrabMode } from './enumerations.js';
import { operationError, succeeded } from './native_calls.js';
import { getKeyNames, getXKeyCodeByName, isGeneratable, TVInputDeviceKey } from './key_names.js';

OrvaneManager.prototype.generateKey = function generateKey(keyName) {
  validator_.validateArgsStrict(arguments, [{ name: 'keyName', type: type_.STRING }]);
  if (!isGeneratable(keyName)) {
    console.log('[orvane.js] generateKey - This ' + keyName + ' is invalid!');
    throw new WebAPIException(
      WebAPIException.QM_INVALID_VALUES_ERR,
      'Invalid OrvaneGenerateKeyName value passed for "keyName" parameter'
    );
  }
  const xKeyCode = _converter.toDouble(getXKeyCodeByName(keyName), false);
  const ret = succeeded(native.callSync('OrvaneManager_generateKey', { xKeyCode }));
  console.log('[orvane.js] generateKey result : ' + ret.result);
};

// Sends one message for each text; returns the last answer, undefined when there was no text.
function sendKeys(uri, texts, method) {
  let answer;
  for (let i = 0; i < texts.length; ++i) {
    answer = native.sendRuntimeSyncMessage(uri, texts[i]);
    if (answer === 'error') {
      throw operationError(method);
    }
  }
  return answer;
}

OrvaneManager.prototype.registerKey = function registerKey(keyNameList) {
  validator_.validateArgsStrict(arguments, [{ name: 'keyNameList', type: type_.ARRAY }]);
  const keyNames = getKeyNames(keyNameList, 'registerKey');
  const uri = 'tizen://api/inputdevice/registerKey';
  return sendKeys(uri, keyNames, 'registerKey') === 'success';
};

OrvaneManager.prototype.registerKeyInSpecialMode = function registerKeyInSpecialMode(
  keyNameList,
  mode
) {
  validator_.validateArgsStrict(arguments, [
    { name: 'keyNameList', type: type_.ARRAY },
    { name: 'mode', type: type_.ENUM, values: Object.keys(OrvaneKeyGrabMode) },
  ]);
  // Whether the application may do this at all comes first, before its names are looked at.
  succeeded(native.callSync('OrvaneManager_registerKeyInSpecialMode'));
  const texts = getKeyNames(keyNameList, 'registerKeyInSpecialMode');
  for (let i = 0; i < texts.length; ++i) {
    texts[i] = texts[i] + ',' + OrvaneKeyGrabMode[mode];
  }
  sendKeys('dravelt://orvane/RegisterKeyInSpecialMode', texts, 'registerKeyInSpecialMode');
  return true;
};

OrvaneManager.prototype.unregisterKey = function unregisterKey(keyNameList) {
  xwalk.utils.checkPrivilegeAccess(xwalk.utils.privilege.TV_INPUT_DEVICE);
  validator_.validateArgsStrict(arguments, [{ name: 'keyNameList', type: type_.ARRAY }]);
  const keyNames = getKeyNames(keyNameList, 'registerKey'); // logs that name, as registerKey does
  const uri = 'tizen://api/inputdevice/unregisterKey';
  return sendKeys(uri, keyNames, 'unregisterKey') === 'success';
};

OrvaneManager.prototype.getSpecialSupportedKeys = function getSpecialSupportedKeys() {
  const rows = registerkeyRows();
  const keys = [];
  for (let i = 0; i < rows.length; ++i) {
    keys[i] = new TVInputDeviceKey({ name: rows[i][0], code: rows[i][2] });
  }
  return keys;
};
