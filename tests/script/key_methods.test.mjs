// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { generatekeys } from './expected_keys.mjs';
import { FakeRuntime, failure, success } from './fake_runtime.mjs';

const registerUri = 'tizen://api/inputdevice/registerKey';
const unregisterUri = 'tizen://api/inputdevice/unregisterKey';
const specialUri = 'dravelt://orvane/RegisterKeyInSpecialMode';
const specialMessage = 'OrvaneManager_registerKeyInSpecialMode';
const badName = {
  code: 'QM_INVALID_VALUES_ERR',
  message: 'Parameter "Invalid OrvaneKeyName value passed for keyNameList parameter',
};

function runtimeAnswering(...answers) {
  const runtime = new FakeRuntime();
  runtime.answers = answers;
  return runtime;
}

function operationError(method) {
  return {
    code: 'QM_UNKNOWN_ERR',
    message: `An error occurred in the operation of ${method}.`,
  };
}

describe('generateKey', () => {
  for (const [name, , , hardwareCode] of generatekeys) {
    test(`sends the hardware code of ${name}`, () => {
      const runtime = new FakeRuntime();
      runtime.replies.OrvaneManager_generateKey = success(true);

      const result = runtime.orvane.generateKey(name);

      assert.equal(result, undefined);
      assert.deepEqual(runtime.sent, [
        ['callSync', 'OrvaneManager_generateKey', { xKeyCode: hardwareCode }],
      ]);
    });
  }

  test('converts the code to a double that is not nullable', () => {
    const runtime = new FakeRuntime();

    runtime.orvane.generateKey('VolumeUp');

    assert.deepEqual(runtime.named('toDouble'), [['toDouble', 76, false]]);
  });

  test('logs the conversion and then the result member of the reply', () => {
    const runtime = new FakeRuntime();
    runtime.replies.OrvaneManager_generateKey = success(true);

    runtime.orvane.generateKey('Back');

    assert.deepEqual(runtime.logs, [
      '[orvane.js] Conver Name[Back] to keyCode[9]',
      '[orvane.js] generateKey result : true',
    ]);
  });

  for (const name of ['Menu', '', 'back', 'toString', '__proto__', 'hasOwnProperty']) {
    test(`refuses "${name}" and sends nothing`, () => {
      const runtime = new FakeRuntime();

      assert.throws(() => runtime.orvane.generateKey(name), {
        code: 'QM_INVALID_VALUES_ERR',
        message: 'Invalid OrvaneGenerateKeyName value passed for "keyName" parameter',
      });

      assert.deepEqual(runtime.sent, []);
      assert.deepEqual(runtime.logs, [`[orvane.js] generateKey - This ${name} is invalid!`]);
    });
  }

  test('throws the native error object and logs no result', () => {
    const runtime = new FakeRuntime();
    const reply = failure();
    runtime.replies.OrvaneManager_generateKey = reply;

    assert.throws(
      () => runtime.orvane.generateKey('Back'),
      (error) => error === reply.error
    );

    assert.deepEqual(runtime.logs, ['[orvane.js] Conver Name[Back] to keyCode[9]']);
  });
});

for (const [method, uri] of [
  ['registerKey', registerUri],
  ['unregisterKey', unregisterUri],
]) {
  describe(method, () => {
    test('sends one message per key, in order', () => {
      const runtime = runtimeAnswering('success');

      const result = runtime.orvane[method](['Menu', 'Back', 'OneTouch1', '3']);

      assert.equal(result, true);
      assert.deepEqual(runtime.sent, [
        ['runtimeSync', uri, 'XF86SysMenu'],
        ['runtimeSync', uri, 'XF86Back'],
        ['runtimeSync', uri, 'XF86OneTouch1'],
        ['runtimeSync', uri, '3'],
      ]);
    });

    test('logs each conversion, with two blanks', () => {
      const runtime = runtimeAnswering('success');

      runtime.orvane[method](['Menu', 'Back']);

      assert.deepEqual(runtime.logs, [
        '[orvane.js]  Conver Name[Menu] to keyName[XF86SysMenu]',
        '[orvane.js]  Conver Name[Back] to keyName[XF86Back]',
      ]);
    });

    test('returns false for an empty list and sends nothing', () => {
      const runtime = runtimeAnswering('success');

      assert.equal(runtime.orvane[method]([]), false);
      assert.deepEqual(runtime.sent, []);
    });

    test('judges by the last answer alone', () => {
      assert.equal(runtimeAnswering('success', 'other').orvane[method](['Menu', 'Exit']), false);
      assert.equal(runtimeAnswering('other', 'success').orvane[method](['Menu', 'Exit']), true);
      assert.equal(runtimeAnswering(undefined).orvane[method](['Menu']), false);
    });

    test('throws at the first answer "error" and sends no further key', () => {
      const runtime = runtimeAnswering('success', 'error', 'success');

      assert.throws(() => runtime.orvane[method](['Menu', 'Exit', 'Info']), operationError(method));

      assert.equal(runtime.sent.length, 2);
    });

    test('goes on after an answer that only contains "error"', () => {
      const runtime = runtimeAnswering('error: busy', 'success');

      assert.equal(runtime.orvane[method](['Menu', 'Exit']), true);
    });

    test('registers none of a list with an unknown name', () => {
      const runtime = runtimeAnswering('success');

      assert.throws(() => runtime.orvane[method](['Menu', 'Nope', 'Exit']), badName);

      assert.deepEqual(runtime.sent, []);
      assert.deepEqual(runtime.logs, [
        '[orvane.js]  Conver Name[Menu] to keyName[XF86SysMenu]',
        '[orvane.js] registerKey - This Nope is invalid!',
      ]);
    });

    test('accepts numbers from 0 to 9 as digit keys', () => {
      const runtime = runtimeAnswering('success');

      runtime.orvane[method]([0, 1, 2, 3, 4, 5, 6, 7, 8, 9]);

      assert.deepEqual(
        runtime.sent.map(([, , text]) => text),
        [...'0123456789']
      );
    });
  });
}

test('registerKey checks no privilege', () => {
  const runtime = runtimeAnswering('success');

  runtime.orvane.registerKey(['Menu']);

  assert.deepEqual(runtime.named('privilege'), []);
});

describe('unregisterKey', () => {
  test('checks the privilege before its arguments', () => {
    const runtime = runtimeAnswering('success');

    runtime.orvane.unregisterKey(['Menu']);

    assert.deepEqual(runtime.events[0], ['privilege', 'the input device privilege']);
    assert.equal(runtime.events[1][0], 'validate');
  });

  test('does nothing without the privilege', () => {
    const runtime = runtimeAnswering('success');
    runtime.privilegeError = new Error('Permission denied');

    assert.throws(() => runtime.orvane.unregisterKey(['Menu']), runtime.privilegeError);

    assert.equal(runtime.events.length, 1);
  });
});

describe('registerKeyInSpecialMode', () => {
  test('asks the native side without arguments, then sends each key with the mode', () => {
    const runtime = runtimeAnswering('success');

    const result = runtime.orvane.registerKeyInSpecialMode(['ColorF0Red', 'Back'], 'TOPMOST');

    assert.equal(result, true);
    assert.deepEqual(runtime.sent, [
      ['callSync', specialMessage],
      ['runtimeSync', specialUri, 'XF86Red,2'],
      ['runtimeSync', specialUri, 'XF86Back,2'],
    ]);
  });

  test('sends 5 for REGISTERED', () => {
    const runtime = runtimeAnswering('success');

    runtime.orvane.registerKeyInSpecialMode([7], 'REGISTERED');

    assert.deepEqual(runtime.sent[1], ['runtimeSync', specialUri, '7,5']);
  });

  test('returns true whatever the last answer was, and for an empty list', () => {
    assert.equal(runtimeAnswering('x').orvane.registerKeyInSpecialMode(['Menu'], 'TOPMOST'), true);
    assert.equal(runtimeAnswering('x').orvane.registerKeyInSpecialMode([], 'TOPMOST'), true);
  });

  test('throws the native error before it looks at the names', () => {
    const runtime = runtimeAnswering('success');
    const reply = failure('Application does not have required metadata value');
    runtime.replies[specialMessage] = reply;

    assert.throws(
      () => runtime.orvane.registerKeyInSpecialMode(['Nope'], 'TOPMOST'),
      (error) => error === reply.error
    );

    assert.deepEqual(runtime.logs, []);
    assert.deepEqual(runtime.sent, [['callSync', specialMessage]]);
  });

  test('registers none of a list with an unknown name', () => {
    const runtime = runtimeAnswering('success');

    assert.throws(
      () => runtime.orvane.registerKeyInSpecialMode(['Menu', 'Nope'], 'TOPMOST'),
      badName
    );

    assert.deepEqual(runtime.sent, [['callSync', specialMessage]]);
    assert.deepEqual(runtime.logs.slice(1), [
      '[orvane.js] registerKeyInSpecialMode - This Nope is invalid!',
    ]);
  });

  test('throws at the first answer "error"', () => {
    const runtime = runtimeAnswering('error');

    assert.throws(
      () => runtime.orvane.registerKeyInSpecialMode(['Menu', 'Exit'], 'TOPMOST'),
      operationError('registerKeyInSpecialMode')
    );

    assert.equal(runtime.sent.length, 2);
  });
});
