// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// From the key names of a page to what the platform calls those keys.

import { generatekeyMap, loadKeyTables, mandatorykeyMap, registerkeyMap } from './key_tables.js';

// The text of a list element: loose elements such as the number 5 stand for the key of that name.
// Read once, because an object may give another text the next time. Never throws.
function keyNameText(element) {
  try {
    return String(element);
  } catch (error) {
    return typeof element;
  }
}

export function isGeneratable(keyName) {
  loadKeyTables();
  return keyName in generatekeyMap;
}

function isRegisterable(keyName) {
  loadKeyTables();
  return keyName in registerkeyMap || keyName in mandatorykeyMap;
}

// The hardware code of a key that can be generated, "" for any other name.
export function getXKeyCodeByName(keyName) {
  loadKeyTables();
  const result = keyName in generatekeyMap ? generatekeyMap[keyName].xkeyCode : '';
  console.log('[orvane.js] Conver Name[' + keyName + '] to keyCode[' + result + ']');
  return result;
}

// The platform symbol of a key that can be registered, "" for any other name.
function getKeyNameByName(keyName) {
  loadKeyTables();
  let result = '';
  if (keyName in registerkeyMap) {
    result = registerkeyMap[keyName].keyName;
  }
  if (keyName in mandatorykeyMap) {
    result = mandatorykeyMap[keyName].keyName;
  }
  console.log('[orvane.js]  Conver Name[' + keyName + '] to keyName[' + result + ']');
  return result;
}

// The platform symbols of a page's list, in order; throws at the first name that is no key. Callers
// convert the whole list before they send anything, so one bad name leaves every key as it was.
export function getKeyNames(keyNameList, caller) {
  const keyNames = [];
  const length = keyNameList.length;
  for (let i = 0; i < length; ++i) {
    const name = keyNameText(keyNameList[i]);
    if (!isRegisterable(name)) {
      console.log('[orvane.js] ' + caller + ' - This ' + name + ' is invalid!');
      // The quote in this text opens and never closes: pages compare with it as it stands.
      throw new WebAPIException(
        WebAPIException.QM_INVALID_VALUES_ERR,
        'Parameter "Invalid OrvaneKeyName value passed for keyNameList parameter'
      );
    }
    keyNames[i] = getKeyNameByName(name);
  }
  return keyNames;
}

// A frozen copy of the properties of dict: what getSpecialSupportedKeys hands out.
export function TVInputDeviceKey(dict) {
  const names = Object.getOwnPropertyNames(dict);
  for (let i = 0; i < names.length; ++i) {
    Object.defineProperty(this, names[i], {
      __proto__: null, // a page that puts "get" on Object.prototype changes nothing here
      value: dict[names[i]],
      enumerable: true,
      writable: false,
      configurable: false,
    });
  }
  Object.freeze(this);
}
