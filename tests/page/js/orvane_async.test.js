// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

const { orvane } = dravelt;

const { SCREEN_SAVER_OFF, SCREEN_SAVER_ON } = orvane.OrvaneScreenSaverState;
const performanceData = 'memory/runningApps/performance_data';
const mismatch = (message) => ({ name: 'TypeMismatchError', code: 17, message });
const sent = () =>
  testing
    .messages()
    .filter(([what]) => what.startsWith('>'))
    .map((message) => message[2]);

// What a method gives to its callbacks: ['success' or 'error', ...arguments].
function outcome(call) {
  return new Promise((resolve) => {
    const returned = call(
      (...args) => resolve(['success', ...args]),
      (...args) => resolve(['error', ...args])
    );
    assert.equal(returned, undefined);
  });
}

function checkUnknownError(got, message) {
  assert.equal(got[0], 'error');
  assert.equal(got.length, 2);
  assert.ok(got[1] instanceof WebAPIException);
  assert.deepEqual([got[1].code, got[1].name, got[1].message], [9999, 'UnknownError', message]);
}

describe('getSystemStat', () => {
  test('gives the use of the processor', async () => {
    const got = await outcome((...callbacks) => orvane.getSystemStat('CPU', ...callbacks));
    assert.equal(got[0], 'success');
    assert.deepEqual(Object.keys(got[1]), ['cpuUsage']);
    assert.ok(Number.isInteger(got[1].cpuUsage) && got[1].cpuUsage >= 0);
    assert.deepEqual(sent(), [
      '{"cmd":"OrvaneManager_getSystemStat","args":{"resource":"CPU","callbackId":1}}',
    ]);
    assert.deepEqual(testing.consoleLines(), []);
  });

  test('gives the use of memory', async () => {
    const got = await outcome((...callbacks) => orvane.getSystemStat('MEMORY', ...callbacks));
    assert.equal(got[0], 'success');
    assert.deepEqual(Object.keys(got[1]), ['memoryUsage']);
    assert.ok(got[1].memoryUsage > 0);
  });

  test('answers calls that overlap', async () => {
    const stats = await Promise.all(
      ['CPU', 'MEMORY', 'CPU'].map((resource) =>
        outcome((...callbacks) => orvane.getSystemStat(resource, ...callbacks))
      )
    );
    assert.deepEqual(
      stats.map(([, result]) => Object.keys(result)[0]),
      ['cpuUsage', 'memoryUsage', 'cpuUsage']
    );
  });

  test('wants a resource and a callback', () => {
    assert.throws(
      () => orvane.getSystemStat('cpu', () => {}),
      mismatch('Argument 1 "resource" must be one of "CPU", "MEMORY", but is the string "cpu".')
    );
    assert.throws(
      () => orvane.getSystemStat('CPU'),
      mismatch('Argument 2 "onsuccess" is missing: it must be a function.')
    );
    assert.throws(() => orvane.getSystemStat('CPU', null), { code: 17 });
    assert.throws(() => orvane.getSystemStat('CPU', () => {}, {}), { code: 17 });
    assert.deepEqual(sent(), []);
  });
});

describe('setScreenSaver', () => {
  test('switches it off and on', async () => {
    for (const state of [SCREEN_SAVER_OFF, SCREEN_SAVER_ON]) {
      const got = await outcome((...callbacks) => orvane.setScreenSaver(state, ...callbacks));
      assert.deepEqual(got, ['success', null]);
    }
    assert.deepEqual(sent(), [
      '{"cmd":"OrvaneManager_setScreenSaver","args":{"state":0,"callbackId":1}}',
      '{"cmd":"OrvaneManager_setScreenSaver","args":{"state":1,"callbackId":2}}',
    ]);
    assert.deepEqual(testing.consoleLines(), [
      '[Orvane] setScreenSaver successCallback',
      '[Orvane] setScreenSaver successCallback',
    ]);
  });

  test('gives a refusal to the error callback', async () => {
    testing.fail('screensaver_set_appid', -1);
    testing.fail('screensaver_set_timeout', -1);
    const got = await outcome((...callbacks) =>
      orvane.setScreenSaver(SCREEN_SAVER_ON, ...callbacks)
    );
    checkUnknownError(got, 'Fail to activate ScreenSaver');
    assert.deepEqual(testing.consoleLines(), ['[Orvane] setScreenSaver errorCallback']);
  });

  test('does without callbacks', async () => {
    assert.equal(orvane.setScreenSaver(SCREEN_SAVER_ON), undefined);
    orvane.setScreenSaver(SCREEN_SAVER_ON, null, null);
    await outcome((...callbacks) => orvane.setScreenSaver(SCREEN_SAVER_ON, ...callbacks));
    assert.equal(testing.consoleLines().length, 3);
  });

  test('wants a value of the enumeration', () => {
    assert.throws(
      () => orvane.setScreenSaver(2),
      mismatch('Argument 1 "state" must be one of 0, 1, but is the number 2.')
    );
    assert.throws(() => orvane.setScreenSaver(true), { code: 17 });
    assert.throws(() => orvane.setScreenSaver(), { code: 17 });
    assert.throws(() => orvane.setScreenSaver(0, 'run'), { code: 17 });
    assert.deepEqual(sent(), []);
  });
});

describe('recordProfiling and resetProfiling', () => {
  test('record a label', async () => {
    const got = await outcome((...callbacks) => orvane.recordProfiling('start', ...callbacks));
    assert.deepEqual(got, ['success', null]);
    assert.includes(testing.setting(performanceData), 'start');
    assert.deepEqual(sent(), [
      '{"cmd":"OrvaneManager_recordProfiling","args":{"label":"start","callbackId":1}}',
    ]);
    assert.deepEqual(testing.consoleLines(), ['[Orvane] recordProfiling successCallback']);
  });

  test('reset with an empty label', async () => {
    await outcome((...callbacks) => orvane.recordProfiling('start', ...callbacks));
    testing.forget();
    const got = await outcome((...callbacks) => orvane.resetProfiling(...callbacks));
    assert.deepEqual(got, ['success', null]);
    assert.deepEqual(sent(), [
      '{"cmd":"OrvaneManager_recordProfiling","args":{"label":"","callbackId":2}}',
    ]);
    assert.deepEqual(testing.consoleLines(), ['[Orvane] resetProfiling successCallback']);
  });

  test('give a refusal to the error callback, later', async () => {
    testing.fail('vconf_set_str', -1);
    const record = await outcome((...callbacks) => orvane.recordProfiling('x', ...callbacks));
    const reset = await outcome((...callbacks) => orvane.resetProfiling(...callbacks));
    checkUnknownError(record, 'Fail to record profile');
    checkUnknownError(reset, 'Fail to record profile');
    assert.deepEqual(testing.consoleLines(), [
      '[Orvane] recordProfiling errorCallback',
      '[Orvane] resetProfiling errorCallback',
    ]);
  });

  test('want a text and functions', () => {
    assert.throws(
      () => orvane.recordProfiling(5),
      mismatch('Argument 1 "label" must be a string, but is the number 5.')
    );
    assert.throws(() => orvane.recordProfiling(null), { code: 17 });
    assert.throws(
      () => orvane.resetProfiling('x'),
      mismatch('Argument 1 "onsuccess" must be a function, or null, but is the string "x".')
    );
    assert.deepEqual(sent(), []);
  });
});
