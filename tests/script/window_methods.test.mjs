// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { FakeRuntime, failure } from './fake_runtime.mjs';

function runtimeAnswering(answer) {
  const runtime = new FakeRuntime();
  runtime.answers = [answer];
  return runtime;
}

const badPosition = {
  code: 'QM_INVALID_VALUES_ERR',
  message: 'Invalid value passed for epopPosition parameter',
};

describe('setEpopAppWindow', () => {
  for (const position of [0, 1, 2, 3, 4]) {
    test(`moves to the quarter position ${position}`, () => {
      const runtime = runtimeAnswering('success');

      assert.equal(runtime.orvane.setEpopAppWindow(position), true);

      assert.deepEqual(runtime.named('callSync', 'widget.move', 'widget.setQuarterPosition'), [
        ['callSync', 'OrvaneManager_setEpopAppWindow', {}],
        ['widget.setQuarterPosition', position],
      ]);
    });
  }

  for (const args of [[5], [-1], [-1, null], [5, false], [NaN], [5, 'true'], [1e9, 1]]) {
    test(`refuses (${args.map(String).join(', ')}) and sends nothing`, () => {
      const runtime = runtimeAnswering('success');

      assert.throws(() => runtime.orvane.setEpopAppWindow(...args), badPosition);

      assert.deepEqual(runtime.events.slice(1), []);
    });
  }

  for (const position of [5, -1, 1919]) {
    test(`moves to x ${position}, y 0 in any-position mode`, () => {
      const runtime = runtimeAnswering('success');

      assert.equal(runtime.orvane.setEpopAppWindow(position, true), true);

      assert.deepEqual(runtime.named('widget.move', 'widget.setQuarterPosition'), [
        ['widget.move', position, 0],
      ]);
    });
  }

  for (const [mode, shown] of [
    [undefined, false],
    [null, false],
    [false, false],
    [true, true],
    ['true', false],
    [1, false],
  ]) {
    test(`logs the mode ${JSON.stringify(mode)} as ${shown}, then the outcome`, () => {
      const runtime = runtimeAnswering('success');

      runtime.orvane.setEpopAppWindow(2, mode);

      assert.deepEqual(runtime.logs, [
        `setEpopAppWindow post message position:2 anypositionmode:${shown}`,
        '[orvane.js] setEpopAppWindow message data true',
      ]);
    });
  }

  test('logs before it asks the native side', () => {
    const runtime = runtimeAnswering('success');

    runtime.orvane.setEpopAppWindow(0);

    assert.deepEqual(
      runtime.events.map(([what]) => what),
      ['validate', 'log', 'callSync', 'widget.setQuarterPosition', 'log']
    );
  });

  test('throws the native error object and moves nothing', () => {
    const runtime = runtimeAnswering('success');
    const reply = failure('setEpopappWindow is only supported on UHD models');
    runtime.replies.OrvaneManager_setEpopAppWindow = reply;

    assert.throws(
      () => runtime.orvane.setEpopAppWindow(0),
      (error) => error === reply.error
    );

    assert.deepEqual(runtime.named('widget.setQuarterPosition'), []);
    assert.equal(runtime.logs.length, 1);
  });

  for (const answer of ['error', '', undefined, true, 'Success']) {
    test(`throws when the window answers ${JSON.stringify(answer)}`, () => {
      const runtime = runtimeAnswering(answer);

      assert.throws(() => runtime.orvane.setEpopAppWindow(0), {
        code: 'QM_UNKNOWN_ERR',
        message: 'Unknown system error occurred',
      });

      assert.equal(runtime.logs[1], '[orvane.js] setEpopAppWindow error QM_UNKNOWN_ERR');
    });
  }
});

for (const [method, uri, cases] of [
  ['setAppFocus', 'tizen://setFocus', { true: true, false: false }],
  [
    'setWindowStackMode',
    'tizen://setWindowStackMode',
    { NONE: 'NONE', BELOW: 'BELOW', ABOVE: 'ABOVE' },
  ],
]) {
  describe(method, () => {
    for (const [text, argument] of Object.entries(cases)) {
      test(`sends the text ${text} and returns nothing`, () => {
        const runtime = runtimeAnswering('success');

        assert.equal(runtime.orvane[method](argument), undefined);

        assert.deepEqual(runtime.sent, [['runtimeSync', uri, text]]);
        assert.deepEqual(runtime.logs, []);
      });
    }

    for (const answer of ['error', '', undefined, 'Success']) {
      test(`throws for the answer ${JSON.stringify(answer)}`, () => {
        const [argument] = Object.values(cases);

        assert.throws(() => runtimeAnswering(answer).orvane[method](argument), {
          code: 'QM_UNKNOWN_ERR',
          message: `An error occurred in the operation of ${method}.`,
        });
      });
    }
  });
}
