// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Methods about the set and its applications.

import { native, OrvaneManager, type_, validator_ } from './preamble.js';
import {
  actionValues,
  resourceValues,
  screenSaverStateValues,
  targetValues,
} from './enumerations.js';
import { callSync, optionalCallback, replyReceiver, succeeded } from './native_calls.js';

OrvaneManager.prototype.getVersion = function getVersion() {
  return callSync('OrvaneManager_getVersion');
};

OrvaneManager.prototype.getUuid = function getUuid() {
  return callSync('OrvaneManager_getUuid');
};

OrvaneManager.prototype.getForegroundAppId = function getForegroundAppId() {
  return native.getResultObject(succeeded(native.callSync('OrvaneManager_getForegroundAppId')));
};

OrvaneManager.prototype.getAppState = function getAppState(appid) {
  validator_.validateArgsStrict(arguments, [
    { name: 'appid', type: type_.STRING, optional: true, nullable: true },
  ]);
  const args = { appid: appid ? appid : '' };
  return native.getResultObject(succeeded(native.callSync('OrvaneManager_getAppState', args)));
};

OrvaneManager.prototype.requestTvContextTask = function requestTvContextTask(target, action) {
  validator_.validateArgsStrict(arguments, [
    { name: 'target', type: type_.ENUM, values: targetValues },
    { name: 'action', type: type_.ENUM, values: actionValues },
  ]);
  const args = { target, action };
  return native.getResultObject(
    succeeded(native.callSync('OrvaneManager_requestTvContextTask', args))
  );
};

OrvaneManager.prototype.getSystemStat = function getSystemStat(resource, onsuccess, onerror) {
  validator_.validateArgsStrict(arguments, [
    { name: 'resource', type: type_.ENUM, values: resourceValues },
    { name: 'onsuccess', type: type_.FUNCTION },
    optionalCallback('onerror'),
  ]);
  native.call('OrvaneManager_getSystemStat', { resource }, (ret) => {
    if (native.isFailure(ret)) {
      native.callIfPossible(onerror, native.getErrorObject(ret));
      return;
    }
    native.callIfPossible(onsuccess, native.getResultObject(ret));
  });
};

OrvaneManager.prototype.setScreenSaver = function setScreenSaver(state, onsuccess, onerror) {
  const rules = [
    { name: 'state', type: type_.ENUM, values: screenSaverStateValues },
    optionalCallback('onsuccess'),
    optionalCallback('onerror'),
  ];
  validator_.validateArgsStrict(arguments, rules, true);
  const receive = replyReceiver('setScreenSaver', onsuccess, onerror);
  native.call('OrvaneManager_setScreenSaver', { state }, receive);
};

// Forgets every point that recordProfiling has marked: that is what an empty label means.
OrvaneManager.prototype.resetProfiling = function resetProfiling(onsuccess, onerror) {
  validator_.validateArgsStrict(arguments, [
    optionalCallback('onsuccess'),
    optionalCallback('onerror'),
  ]);
  const receive = replyReceiver('resetProfiling', onsuccess, onerror);
  native.call('OrvaneManager_recordProfiling', { label: '' }, receive);
};

OrvaneManager.prototype.recordProfiling = function recordProfiling(label, onsuccess, onerror) {
  validator_.validateArgsStrict(arguments, [
    { name: 'label', type: type_.STRING },
    optionalCallback('onsuccess'),
    optionalCallback('onerror'),
  ]);
  const receive = replyReceiver('recordProfiling', onsuccess, onerror);
  native.call('OrvaneManager_recordProfiling', { label }, receive);
};
