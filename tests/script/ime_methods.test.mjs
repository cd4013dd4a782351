// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { FakeRuntime, FakeWebAPIException, failure, success } from './fake_runtime.mjs';

const positionUri = 'dravelt://orvane/setIMEPosition';
const badFormat = {
  code: 'QM_INVALID_VALUES_ERR',
  message: 'Invalid input format. Please enter px or %.',
};

function runtimeAt(resolution, answer = 'success') {
  const runtime = new FakeRuntime();
  runtime.replies.OrvaneManager_getIMEResolution = success(resolution);
  runtime.answers = [answer];
  return runtime;
}

// The text that setIMEPosition sends.
function positionText(resolution, ...args) {
  const runtime = runtimeAt(resolution);
  runtime.orvane.setIMEPosition(...args);
  return runtime.named('runtimeSync')[0][2];
}

describe('setIMEPosition', () => {
  test('asks for the resolution without arguments, then sends the position', () => {
    const runtime = runtimeAt(0);

    const result = runtime.orvane.setIMEPosition();

    assert.equal(result, true);
    assert.deepEqual(runtime.sent, [
      ['callSync', 'OrvaneManager_getIMEResolution'],
      ['runtimeSync', positionUri, '960,1080,7'],
    ]);
  });

  test('asks for the resolution every time', () => {
    const runtime = runtimeAt(0);

    runtime.orvane.setIMEPosition();
    runtime.orvane.setIMEPosition();

    assert.equal(runtime.named('callSync').length, 2);
  });

  const texts = [
    [1, [], '1920,2160,7'],
    [2, [], '960,1080,7'],
    [-1, [], '960,1080,7'],
    [0, ['10%', '20px', 'TOP_LEFT'], '192,20,0'],
    [1, ['50%', '50%', 'MIDDLE_CENTER'], '1920,1080,4'],
    [1, ['100px', '100px', 'TOP_RIGHT'], '100,100,2'],
    [0, [null, null, null], '960,1080,7'],
    [0, ['', '', undefined], '960,1080,7'],
    [0, [undefined, '8px'], '960,8,7'],
    [0, ['8px'], '8,1080,7'],
    [0, ['0px', '0%', 'BOTTOM_RIGHT'], '0,0,8'],
    [3, ['33.3%', '33.3%'], '639,359,7'],
  ];
  for (const [resolution, args, text] of texts) {
    test(`sends ${text} for ${JSON.stringify(args)} at resolution ${resolution}`, () => {
      assert.equal(positionText(resolution, ...args), text);
    });
  }

  test('numbers the nine alignments from 0 to 8', () => {
    const names = Object.keys(new FakeRuntime().evaluate('OrvaneAlign'));

    const sent = names.map((name) => positionText(0, null, null, name));

    assert.deepEqual(
      sent,
      names.map((name, index) => `960,1080,${index}`)
    );
  });

  for (const bad of [
    '5',
    '-5px',
    '5 px',
    ' 5px',
    '8.5px',
    '1.25%',
    '-1%',
    '5%%',
    'px',
    '%',
    '5PX',
  ]) {
    test(`refuses the position "${bad}" on both axes and sends no position`, () => {
      for (const args of [[bad], [null, bad]]) {
        const runtime = runtimeAt(0);

        assert.throws(() => runtime.orvane.setIMEPosition(...args), badFormat);

        assert.deepEqual(runtime.named('runtimeSync'), []);
      }
    });
  }

  test('asks for the resolution before it reads the position', () => {
    const runtime = runtimeAt(0);

    assert.throws(() => runtime.orvane.setIMEPosition('bad'), badFormat);

    assert.deepEqual(runtime.sent, [['callSync', 'OrvaneManager_getIMEResolution']]);
  });

  test('throws the native error and sends no position', () => {
    const runtime = runtimeAt(0);
    const reply = failure('Failed to get ime resolution');
    runtime.replies.OrvaneManager_getIMEResolution = reply;

    assert.throws(
      () => runtime.orvane.setIMEPosition('bad'),
      (error) => error === reply.error
    );

    assert.equal(runtime.sent.length, 1);
  });

  test('throws for the answer "error"', () => {
    assert.throws(() => runtimeAt(0, 'error').orvane.setIMEPosition(), {
      code: 'QM_UNKNOWN_ERR',
      message: 'An error occurred in the operation of setIMEPosition.',
    });
  });

  test('throws for the answer "notsupportederror"', () => {
    assert.throws(() => runtimeAt(0, 'notsupportederror').orvane.setIMEPosition(), {
      code: 'NOT_SUPPORTED_ERR',
      message: 'IME Position setting is not possible. IME Style is not dynamic.',
    });
  });

  test('returns true for any other answer', () => {
    assert.equal(runtimeAt(0, undefined).orvane.setIMEPosition(), true);
    assert.equal(runtimeAt(0, 'Error').orvane.setIMEPosition(), true);
  });

  test('logs nothing', () => {
    const runtime = runtimeAt(1);

    runtime.orvane.setIMEPosition('1%', '1%');

    assert.deepEqual(runtime.logs, []);
  });
});

describe('getPx', () => {
  const getPx = (...args) => new FakeRuntime().evaluate('getPx')(...args);

  test('takes percent of the axis of the resolution', () => {
    assert.equal(getPx('50%', 'FMS_IME_RESOLUTION_4K', 'x'), 1920);
    assert.equal(getPx('50%', 'FMS_IME_RESOLUTION_4K', 'y'), 1080);
    assert.equal(getPx('12.5%', 'FMS_IME_RESOLUTION_2K', 'x'), 240);
  });

  test('rounds down, and takes an undefined resolution for 1920 x 1080', () => {
    assert.equal(getPx('33.3%', undefined, 'y'), 359);
  });

  test('never doubles pixels', () => {
    assert.equal(getPx('100px', 'FMS_IME_RESOLUTION_4K', 'x'), 100);
    assert.equal(getPx('100px', 'FMS_IME_RESOLUTION_2K', 'y'), 100);
  });

  test('allows more than 100 percent', () => {
    assert.equal(getPx('250%', 'FMS_IME_RESOLUTION_2K', 'x'), 4800);
  });

  test('guards against a text that parseValue let through', () => {
    const runtime = new FakeRuntime();
    const guarded = runtime.text.replace('function parseValue(value){', '$&return 1;');

    assert.throws(() => new FakeRuntime({ text: guarded }).evaluate('getPx')('8em', '', 'x'), {
      code: 'QM_INVALID_VALUES_ERR',
      message: 'Please make sure input is valid (e.g. "8px", "8%").',
    });
  });

  test('throws exceptions of the runtime', () => {
    assert.throws(() => getPx('5', '', 'x'), FakeWebAPIException);
  });
});

describe('calculatePxValue', () => {
  test('doubles only for a base with a width of 3840', () => {
    const calculatePxValue = new FakeRuntime().evaluate('calculatePxValue');

    assert.equal(calculatePxValue(8, { width: 3840 }), 16);
    assert.equal(calculatePxValue(8, { width: 1920 }), 8);
    assert.equal(calculatePxValue(8, 3840), 8);
  });
});

test('getBaseSize knows two sizes', () => {
  const size = (name) => ({ ...new FakeRuntime().evaluate('getBaseSize')(name) });

  assert.deepEqual(size('FMS_IME_RESOLUTION_4K'), { width: 3840, height: 2160 });
  assert.deepEqual(size('FMS_IME_RESOLUTION_2K'), { width: 1920, height: 1080 });
  assert.deepEqual(size(undefined), { width: 1920, height: 1080 });
});

for (const [method, uri, argument, payload, operation] of [
  [
    'setIMERecommendedWordsType',
    'dravelt://orvane/setIMERecommendedType',
    1,
    1,
    'setIMERecommendedType',
  ],
  [
    'setIMERecommendedWords',
    'dravelt://orvane/setIMERecommendedWords',
    ['a', 'b c', ''],
    'a,b c,',
    'setIMERecommendedWords',
  ],
]) {
  describe(method, () => {
    test('sends its payload and returns what the runtime returns', () => {
      const runtime = new FakeRuntime();
      runtime.answers = ['the return value'];

      const result = runtime.orvane[method](argument);

      assert.equal(result, 'the return value');
      assert.deepEqual(runtime.sent, [['runtime', uri, payload]]);
    });

    for (const falsy of [false, 0, '', null, undefined]) {
      test(`throws when the runtime returns ${JSON.stringify(falsy)}`, () => {
        const runtime = new FakeRuntime();
        runtime.answers = [falsy];

        assert.throws(() => runtime.orvane[method](argument), {
          code: 'QM_UNKNOWN_ERR',
          message: `An error occurred in the operation of ${operation}.`,
        });
      });
    }
  });
}

test('setIMERecommendedWordsType sends 0 as a number', () => {
  const runtime = new FakeRuntime();
  runtime.answers = [true];

  runtime.orvane.setIMERecommendedWordsType(0);

  assert.strictEqual(runtime.sent[0][2], 0);
});

test('setIMERecommendedWords sends an empty text for an empty list', () => {
  const runtime = new FakeRuntime();
  runtime.answers = [true];

  runtime.orvane.setIMERecommendedWords([]);

  assert.strictEqual(runtime.sent[0][2], '');
});
