// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { FakeRuntime, failure, success } from './fake_runtime.mjs';

for (const method of ['getVersion', 'getUuid']) {
  const message = `OrvaneManager_${method}`;

  describe(method, () => {
    test('asks the native side without arguments and returns its result', () => {
      const runtime = new FakeRuntime();
      runtime.replies[message] = success('3.9');

      assert.equal(runtime.orvane[method](), '3.9');
      assert.deepEqual(runtime.sent, [['callSync', message]]);
      assert.deepEqual(runtime.logs, [`[Orvane] ${message} : 3.9`]);
    });

    test('answers from the cache after the first success', () => {
      const runtime = new FakeRuntime();
      runtime.replies[message] = success('first');
      runtime.orvane[method]();
      runtime.replies[message] = success('second');

      const result = runtime.orvane[method]();

      assert.equal(result, 'first');
      assert.equal(runtime.sent.length, 1);
      assert.equal(runtime.logs[1], `[Orvane] ${message} cache: first`);
    });

    test('throws the native error object and asks again the next time', () => {
      const runtime = new FakeRuntime();
      const reply = failure();
      runtime.replies[message] = reply;

      assert.throws(
        () => runtime.orvane[method](),
        (error) => error === reply.error
      );
      assert.deepEqual(runtime.logs, []);
      runtime.replies[message] = success('later');

      assert.equal(runtime.orvane[method](), 'later');
      assert.equal(runtime.sent.length, 2);
    });

    test('keeps a result of its own in each page', () => {
      const [one, other] = [new FakeRuntime(), new FakeRuntime()];
      one.replies[message] = success('one');
      other.replies[message] = success('other');
      one.orvane[method]();

      assert.equal(other.orvane[method](), 'other');
    });

    test('remembers an empty result as well', () => {
      const runtime = new FakeRuntime();
      runtime.replies[message] = success('');
      runtime.orvane[method]();
      runtime.orvane[method]();

      assert.equal(runtime.sent.length, 1);
    });
  });
}

test('getVersion and getUuid do not answer for each other', () => {
  const runtime = new FakeRuntime();
  runtime.replies.OrvaneManager_getVersion = success('version');
  runtime.replies.OrvaneManager_getUuid = success('uuid');

  assert.equal(runtime.orvane.getVersion(), 'version');
  assert.equal(runtime.orvane.getUuid(), 'uuid');
});

test('getForegroundAppId asks every time, without arguments', () => {
  const runtime = new FakeRuntime();
  runtime.replies.OrvaneManager_getForegroundAppId = success('org.first');
  runtime.orvane.getForegroundAppId();
  runtime.replies.OrvaneManager_getForegroundAppId = success('org.second');

  assert.equal(runtime.orvane.getForegroundAppId(), 'org.second');
  assert.deepEqual(runtime.sent[1], ['callSync', 'OrvaneManager_getForegroundAppId']);
  assert.deepEqual(runtime.logs, []);
});

describe('getAppState', () => {
  for (const args of [[], [undefined], [null], ['']]) {
    test(`sends an empty id for ${JSON.stringify(args)}`, () => {
      const runtime = new FakeRuntime();

      runtime.orvane.getAppState(...args);

      assert.deepEqual(runtime.sent, [['callSync', 'OrvaneManager_getAppState', { appid: '' }]]);
    });
  }

  test('sends the id and returns the result', () => {
    const runtime = new FakeRuntime();
    runtime.replies.OrvaneManager_getAppState = success('BACKGROUND');

    assert.equal(runtime.orvane.getAppState('org.some.App'), 'BACKGROUND');
    assert.deepEqual(runtime.sent[0][2], { appid: 'org.some.App' });
  });
});

test('requestTvContextTask sends both numbers and returns the result', () => {
  const runtime = new FakeRuntime();
  runtime.replies.OrvaneManager_requestTvContextTask = success(true);
  const { OrvaneTarget, OrvaneAction } = runtime.orvane;

  const result = runtime.orvane.requestTvContextTask(
    OrvaneTarget.CONFIG_LAST_SOURCE,
    OrvaneAction.CONFIG_LAUNCH
  );

  assert.equal(result, true);
  assert.deepEqual(runtime.sent, [
    ['callSync', 'OrvaneManager_requestTvContextTask', { target: 0, action: 0 }],
  ]);
});

for (const [method, args] of [
  ['getForegroundAppId', []],
  ['getAppState', ['org.some.App']],
  ['requestTvContextTask', [0, 0]],
]) {
  test(`${method} throws the native error object`, () => {
    const runtime = new FakeRuntime();
    const reply = failure();
    runtime.replies[`OrvaneManager_${method}`] = reply;

    assert.throws(
      () => runtime.orvane[method](...args),
      (error) => error === reply.error
    );
  });
}
