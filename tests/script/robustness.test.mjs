// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What a page may do to the script, by accident or on purpose.

import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { FakeRuntime, success } from './fake_runtime.mjs';

const badName = { code: 'QM_INVALID_VALUES_ERR' };

function runtimeAnswering(answer) {
  const runtime = new FakeRuntime();
  runtime.answers = [answer];
  return runtime;
}

describe('Key lists with hostile elements', () => {
  const elements = {
    null: null,
    undefined: undefined,
    'an empty text': '',
    'a name of every object': 'toString',
    'the name of a prototype': '__proto__',
    'the name of a method': 'hasOwnProperty',
    'the constructor': 'constructor',
    'another case': 'menu',
    'an object': {},
    'an object without a prototype': Object.create(null),
    'an object whose text throws': {
      toString() {
        throw new Error('no text');
      },
    },
    'a symbol': Symbol('Menu'),
    'a number with two digits': 10,
    'a negative number': -1,
    'a fraction': 5.5,
    'not a number': NaN,
    true: true,
    'a blank and a name': ' Menu',
    'a padded digit': '05',
  };
  for (const [what, element] of Object.entries(elements)) {
    test(`refuse ${what} and send nothing`, () => {
      for (const method of ['registerKey', 'unregisterKey']) {
        const runtime = runtimeAnswering('success');

        assert.throws(() => runtime.orvane[method](['Menu', element]), badName);

        assert.deepEqual(runtime.sent, []);
        assert.match(runtime.logs.at(-1), /^\[orvane\.js\] registerKey - This .* ?is invalid!$/);
      }
    });
  }

  test('refuse a hole', () => {
    const runtime = runtimeAnswering('success');

    // eslint-disable-next-line no-sparse-arrays
    assert.throws(() => runtime.orvane.registerKey([, 'Menu']), badName);
  });

  test('read an element once', () => {
    const runtime = runtimeAnswering('success');
    let reads = 0;
    const changing = { toString: () => (++reads === 1 ? 'Menu' : 'Nope') };

    runtime.orvane.registerKey([changing]);

    assert.equal(reads, 1);
    assert.equal(runtime.sent[0][2], 'XF86SysMenu');
  });

  test('end although the list grows while it is read', () => {
    const runtime = runtimeAnswering('success');
    const list = [];
    list.push({
      toString() {
        list.push(this);
        return 'Menu';
      },
    });

    runtime.orvane.registerKey(list);

    assert.equal(runtime.sent.length, 1);
  });
});

test('A hint is read once', () => {
  const runtime = new FakeRuntime();
  let reads = 0;
  const hint = {
    get key() {
      return ++reads < 3 ? 'key' : {};
    },
    value: 'value',
  };

  runtime.orvane.setAuxHint(hint);

  assert.equal(runtime.sent[1][2], 'key,value');
  assert.equal(reads, 2); // one by the fake validator, which copies what it is given
});

test('Loading and calling leave the shared prototypes alone', () => {
  const runtime = runtimeAnswering('success');
  const listing = `[Object, Array, Function, String, Map, RegExp]
    .map((type) => Object.getOwnPropertyNames(type.prototype).length).join()`;
  const before = new FakeRuntime({ text: '' }).runPage(`return ${listing}`);

  runtime.orvane.registerKey(['Menu']);
  runtime.orvane.getSpecialSupportedKeys();

  assert.equal(runtime.runPage(`return ${listing}`), before);
});

test('Loading puts nothing on the global object', () => {
  const names = (text) => Object.keys(new FakeRuntime({ text }).context);

  assert.deepEqual(names(undefined), names(''));
});

describe('A page that changes the shared prototypes', () => {
  test('adds no key by it', () => {
    const runtime = runtimeAnswering('success');

    runtime.runPage('Object.prototype.Evil = { keyName: "XF86Evil", xkeyCode: 1 };');

    assert.throws(() => runtime.orvane.registerKey(['Evil']), badName);
    assert.throws(() => runtime.orvane.generateKey('Evil'), badName);
  });

  test('still gets the list of keys', () => {
    const runtime = new FakeRuntime();

    runtime.runPage(`
      Object.prototype.get = () => 1;
      Array.prototype.push = Array.prototype.forEach = Array.prototype.map = null;
      Array.prototype[Symbol.iterator] = null;
    `);

    assert.equal(runtime.orvane.getSpecialSupportedKeys().length, 141);
  });

  test('still registers keys', () => {
    const runtime = runtimeAnswering('success');

    runtime.runPage(`
      Array.prototype.push = Array.prototype.forEach = Array.prototype.map = null;
      Array.prototype[Symbol.iterator] = Object.prototype.hasOwnProperty = null;
    `);

    assert.equal(runtime.orvane.registerKey(['Menu']), true);
  });
});

test('A method works when it is called without the object', () => {
  const runtime = new FakeRuntime();
  runtime.replies.OrvaneManager_getVersion = success('3.9');

  assert.equal(
    runtime.runPage('const { getVersion } = dravelt.orvane; return getVersion();'),
    '3.9'
  );
});

test('The tables are out of reach of the page', () => {
  const runtime = runtimeAnswering('success');
  const [key] = runtime.orvane.getSpecialSupportedKeys();

  assert.throws(() => runtime.runPage('return registerkeyMap'), { name: 'ReferenceError' });
  assert.throws(() => Object.assign(key, { code: 1 }), { name: 'TypeError' });
});

test('A runtime that evaluates the script in many pages gets an object for each', () => {
  const runtime = new FakeRuntime();

  assert.notEqual(runtime.evaluate('exports'), runtime.evaluate('exports'));
});
