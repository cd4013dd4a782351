// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { FakeRuntime, failure, success } from './fake_runtime.mjs';

// A runtime whose page callbacks write into its events: ['onsuccess', ...arguments].
function runtimeWithCallbacks() {
  const runtime = new FakeRuntime();
  runtime.onsuccess = (...args) => runtime.record('onsuccess', ...args);
  runtime.onerror = (...args) => runtime.record('onerror', ...args);
  return runtime;
}

// What happened after the message was sent.
function eventsAfterSending(runtime) {
  const sent = runtime.events.findIndex(([what]) => what === 'call' || what === 'runtimeAsync');
  return runtime.events.slice(sent + 1);
}

const noResultMethods = [
  ['setScreenSaver', [0], 'OrvaneManager_setScreenSaver', { state: 0 }],
  ['setScreenSaver', [1], 'OrvaneManager_setScreenSaver', { state: 1 }],
  ['resetProfiling', [], 'OrvaneManager_recordProfiling', { label: '' }],
  ['recordProfiling', ['start'], 'OrvaneManager_recordProfiling', { label: 'start' }],
];

for (const [method, args, message, payload] of noResultMethods) {
  describe(`${method}(${args.join()})`, () => {
    test('sends its message and returns nothing', () => {
      const runtime = runtimeWithCallbacks();

      const result = runtime.orvane[method](...args, runtime.onsuccess, runtime.onerror);

      assert.equal(result, undefined);
      assert.deepEqual(runtime.sent, [['call', message, payload]]);
      assert.deepEqual(eventsAfterSending(runtime), []);
    });

    test('logs a success and calls onsuccess with null at once', () => {
      const runtime = runtimeWithCallbacks();
      runtime.orvane[method](...args, runtime.onsuccess, runtime.onerror);

      runtime.answerPending(success({}));

      assert.deepEqual(eventsAfterSending(runtime), [
        ['log', `[Orvane] ${method} successCallback`],
        ['onsuccess', null],
      ]);
    });

    test('puts a failure off to a timer, which logs and calls onerror', () => {
      const runtime = runtimeWithCallbacks();
      const reply = failure();
      runtime.orvane[method](...args, runtime.onsuccess, runtime.onerror);

      runtime.answerPending(reply);
      assert.deepEqual(eventsAfterSending(runtime), [['setTimeout', 0]]);
      runtime.runTimers();

      assert.deepEqual(eventsAfterSending(runtime).slice(1), [
        ['log', `[Orvane] ${method} errorCallback`],
        ['onerror', reply.error],
      ]);
      assert.equal(runtime.named('onerror')[0][1], reply.error);
    });

    test('logs the outcome when there is no callback', () => {
      for (const callbacks of [[], [null, null]]) {
        const runtime = new FakeRuntime();
        runtime.orvane[method](...args, ...callbacks);
        runtime.orvane[method](...args, ...callbacks);

        runtime.answerPending(success());
        runtime.answerPending(failure());
        runtime.runTimers();

        assert.deepEqual(runtime.logs, [
          `[Orvane] ${method} successCallback`,
          `[Orvane] ${method} errorCallback`,
        ]);
      }
    });
  });
}

describe('getSystemStat', () => {
  for (const resource of ['CPU', 'MEMORY']) {
    test(`sends ${resource} and returns nothing`, () => {
      const runtime = runtimeWithCallbacks();

      const result = runtime.orvane.getSystemStat(resource, runtime.onsuccess);

      assert.equal(result, undefined);
      assert.deepEqual(runtime.sent, [['call', 'OrvaneManager_getSystemStat', { resource }]]);
    });
  }

  test('gives the result object to onsuccess, directly and without a log line', () => {
    const runtime = runtimeWithCallbacks();
    const reply = success({ cpuUsage: 3 });
    runtime.orvane.getSystemStat('CPU', runtime.onsuccess, runtime.onerror);

    runtime.answerPending(reply);

    assert.deepEqual(eventsAfterSending(runtime), [['onsuccess', { cpuUsage: 3 }]]);
    assert.equal(runtime.named('onsuccess')[0][1], reply.result);
  });

  test('gives the error object to onerror, directly and without a log line', () => {
    const runtime = runtimeWithCallbacks();
    const reply = failure('Memory proc file retrieval error.');
    runtime.orvane.getSystemStat('MEMORY', runtime.onsuccess, runtime.onerror);

    runtime.answerPending(reply);

    assert.deepEqual(eventsAfterSending(runtime), [['onerror', reply.error]]);
    assert.equal(runtime.named('onerror')[0][1], reply.error);
  });

  test('swallows a failure when there is no onerror', () => {
    const runtime = runtimeWithCallbacks();
    runtime.orvane.getSystemStat('CPU', runtime.onsuccess);
    runtime.orvane.getSystemStat('CPU', runtime.onsuccess, null);

    runtime.answerPending(failure());
    runtime.answerPending(failure());

    assert.deepEqual(runtime.named('onsuccess', 'onerror', 'log', 'setTimeout'), []);
  });
});

describe('setAuxHint', () => {
  const hint = { key: 'user.hint', value: 'on' };

  test('checks the privilege with an empty object, then sends the hint', () => {
    const runtime = runtimeWithCallbacks();

    const result = runtime.orvane.setAuxHint(hint, runtime.onsuccess, runtime.onerror);

    assert.equal(result, undefined);
    assert.deepEqual(runtime.sent, [
      ['callSync', 'OrvaneManager_checkPlatformLevelPrivilege', {}],
      ['runtimeAsync', 'dravelt://orvane/setAuxHint', 'user.hint,on'],
    ]);
  });

  test('logs a success and calls onsuccess without an argument, directly', () => {
    const runtime = runtimeWithCallbacks();
    runtime.orvane.setAuxHint(hint, runtime.onsuccess, runtime.onerror);

    runtime.answerPending(success());

    assert.deepEqual(eventsAfterSending(runtime), [
      ['log', '[Orvane] setAuxHint successCallback'],
      ['onsuccess'],
    ]);
  });

  test('logs a failure and calls onerror with the error object, directly', () => {
    const runtime = runtimeWithCallbacks();
    const reply = failure();
    runtime.orvane.setAuxHint(hint, runtime.onsuccess, runtime.onerror);

    runtime.answerPending(reply);

    assert.deepEqual(eventsAfterSending(runtime), [
      ['log', '[Orvane] setAuxHint errorCallback'],
      ['onerror', reply.error],
    ]);
  });

  test('logs the outcome when there is no callback', () => {
    const runtime = new FakeRuntime();
    runtime.orvane.setAuxHint(hint);
    runtime.orvane.setAuxHint(hint, null, null);

    runtime.answerPending(success());
    runtime.answerPending(failure());

    assert.deepEqual(runtime.logs, [
      '[Orvane] setAuxHint successCallback',
      '[Orvane] setAuxHint errorCallback',
    ]);
  });

  const mismatches = [
    [{ value: 'on' }, 'auxhint key should be string type'],
    [{ key: 5, value: 5 }, 'auxhint key should be string type'],
    [{ key: null, value: 'on' }, 'auxhint key should be string type'],
    [{ key: 'user.hint' }, 'auxhint value should be string type'],
    [{ key: 'user.hint', value: true }, 'auxhint value should be string type'],
    [{ key: '', value: {} }, 'auxhint value should be string type'],
  ];
  for (const [bad, message] of mismatches) {
    test(`refuses ${JSON.stringify(bad)} and sends nothing`, () => {
      const runtime = new FakeRuntime();

      assert.throws(() => runtime.orvane.setAuxHint(bad), { code: 'TYPE_MISMATCH_ERR', message });

      assert.deepEqual(runtime.sent, []);
    });
  }

  test('sends empty texts', () => {
    const runtime = new FakeRuntime();

    runtime.orvane.setAuxHint({ key: '', value: '' });

    assert.equal(runtime.sent[1][2], ',');
  });

  test('throws the native error object and sends no hint', () => {
    const runtime = runtimeWithCallbacks();
    const reply = failure('Permission denied');
    runtime.replies.OrvaneManager_checkPlatformLevelPrivilege = reply;

    assert.throws(
      () => runtime.orvane.setAuxHint(hint, runtime.onsuccess, runtime.onerror),
      (error) => error === reply.error
    );

    assert.equal(runtime.sent.length, 1);
    assert.deepEqual(runtime.named('onerror', 'log'), []);
  });
});
