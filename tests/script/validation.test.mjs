// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What every method asks the validator, and that nothing is sent before it has answered.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { FakeRuntime, success } from './fake_runtime.mjs';

const callback = () => {};
const optional = (name, type, more) => ({ name, type, ...more, optional: true, nullable: true });
const onsuccess = optional('onsuccess', 'FUNCTION');
const onerror = optional('onerror', 'FUNCTION');
const keyNameList = { name: 'keyNameList', type: 'ARRAY' };
const enumeration = (name, ...values) => ({ name, type: 'ENUM', values });

const positions = ['TOP', 'MIDDLE', 'BOTTOM'].flatMap((row) =>
  ['LEFT', 'CENTER', 'RIGHT'].map((column) => `${row}_${column}`)
);

// Method, good arguments, the rules of the arguments.
const methods = [
  ['generateKey', ['Back'], [{ name: 'keyName', type: 'STRING' }]],
  ['registerKey', [['Menu']], [keyNameList]],
  [
    'registerKeyInSpecialMode',
    [['Menu'], 'TOPMOST'],
    [keyNameList, enumeration('mode', 'TOPMOST', 'REGISTERED')],
  ],
  ['unregisterKey', [['Menu']], [keyNameList]],
  [
    'getSystemStat',
    ['CPU', callback],
    [enumeration('resource', 'CPU', 'MEMORY'), { name: 'onsuccess', type: 'FUNCTION' }, onerror],
  ],
  [
    'setEpopAppWindow',
    [1],
    [{ name: 'epopPosition', type: 'LONG' }, optional('anyPositionMode', 'BOOLEAN')],
  ],
  ['requestTvContextTask', [0, 0], [enumeration('target', 0), enumeration('action', 0)]],
  ['setIMERecommendedWordsType', [1], [enumeration('Type', 0, 1)]],
  ['setIMERecommendedWords', [['a']], [{ name: 'words', type: 'ARRAY', values: 'STRING' }]],
  [
    'setIMEPosition',
    [],
    [
      optional('x', 'STRING'),
      optional('y', 'STRING'),
      optional('align', 'ENUM', { values: positions }),
    ],
  ],
  ['setScreenSaver', [0], [enumeration('state', 0, 1), onsuccess, onerror]],
  ['resetProfiling', [], [onsuccess, onerror]],
  ['recordProfiling', ['label'], [{ name: 'label', type: 'STRING' }, onsuccess, onerror]],
  ['setAppFocus', [true], [{ name: 'state', type: 'BOOLEAN' }]],
  ['setWindowStackMode', ['NONE'], [enumeration('mode', 'NONE', 'BELOW', 'ABOVE')]],
  [
    'setAuxHint',
    [{ key: 'a', value: 'b' }],
    [{ name: 'auxhint', type: 'DICTIONARY' }, onsuccess, onerror],
  ],
  ['getAppState', [], [optional('appid', 'STRING')]],
];
const unchecked = ['getVersion', 'getUuid', 'getForegroundAppId', 'getSpecialSupportedKeys'];

test('OrvaneManager has 21 methods and four enumerations', () => {
  const members = Object.keys(Object.getPrototypeOf(new FakeRuntime().orvane));

  assert.deepEqual(
    members.sort(),
    [
      ...methods.map(([name]) => name),
      ...unchecked,
      'OrvaneTarget',
      'OrvaneAction',
      'OrvaneScreenSaverState',
      'OrvaneRecommendedWordsType',
    ].sort()
  );
  assert.equal(members.length, 25);
});

for (const [method, args, rules] of methods) {
  test(`${method} has its arguments validated`, () => {
    const runtime = new FakeRuntime();
    runtime.answers = ['success'];

    runtime.orvane[method](...args);

    assert.equal(runtime.named('validate').length, 1);
    assert.deepEqual(runtime.rules, rules);
  });

  test(`${method} passes all arguments of the call to the validator`, () => {
    const runtime = new FakeRuntime();
    runtime.argumentError = new Error('no');

    assert.throws(() => runtime.orvane[method](1, 'two', 3, 4));

    assert.deepEqual(runtime.named('validate')[0][2], [1, 'two', 3, 4]);
  });

  test(`${method} sends and logs nothing when an argument is refused`, () => {
    const runtime = new FakeRuntime();
    runtime.argumentError = new TypeError('refused');

    assert.throws(() => runtime.orvane[method](...args), runtime.argumentError);

    const others = runtime.events.filter(([what]) => what !== 'validate' && what !== 'privilege');
    assert.deepEqual(others, []);
  });
}

test('Only setScreenSaver passes a third argument to the validator, true', () => {
  const runtime = new FakeRuntime();
  runtime.answers = ['success'];

  methods.forEach(([method, args]) => runtime.orvane[method](...args));

  const more = runtime.named('validate').map((event, index) => [methods[index][0], event.slice(3)]);
  assert.deepEqual(
    more.filter(([, rest]) => rest.length > 0),
    [['setScreenSaver', [true]]]
  );
});

test('Methods without arguments do not bother the validator', () => {
  const runtime = new FakeRuntime();

  unchecked.forEach((method) => runtime.orvane[method]());

  assert.deepEqual(runtime.named('validate'), []);
});

test('Methods read their own parameters, not what the validator makes of them', () => {
  const runtime = new FakeRuntime();
  runtime.context.xwalk.utils.validator.validateArgsStrict = (args) => {
    args[0] = 'changed by the validator';
    return { appid: 'returned by the validator' };
  };
  runtime.replies.OrvaneManager_getAppState = success('FOREGROUND');

  runtime.orvane.getAppState('org.page');

  assert.deepEqual(runtime.sent, [
    ['callSync', 'OrvaneManager_getAppState', { appid: 'org.page' }],
  ]);
});

test('A page that adds to a public enumeration does not widen what is accepted', () => {
  const runtime = new FakeRuntime();
  runtime.orvane.OrvaneTarget.MINE = 5;

  runtime.orvane.requestTvContextTask(0, 0);

  assert.deepEqual(runtime.rules[0].values, [0]);
});

test('Public enumerations hold their members in order', () => {
  const { orvane } = new FakeRuntime();

  assert.deepEqual(Object.entries(orvane.OrvaneTarget), [['CONFIG_LAST_SOURCE', 0]]);
  assert.deepEqual(Object.entries(orvane.OrvaneAction), [['CONFIG_LAUNCH', 0]]);
  assert.deepEqual(Object.entries(orvane.OrvaneScreenSaverState), [
    ['SCREEN_SAVER_OFF', 0],
    ['SCREEN_SAVER_ON', 1],
  ]);
  assert.deepEqual(Object.entries(orvane.OrvaneRecommendedWordsType), [
    ['RECOMMENDED_WORDS_DISABLE', 0],
    ['RECOMMENDED_WORDS_ENABLE', 1],
  ]);
});

test('Private enumerations hold their members in order', () => {
  const entries = (name) => Object.entries(new FakeRuntime().evaluate(name));

  assert.deepEqual(entries('OrvaneResource'), [
    ['CPU', 'CPU'],
    ['MEMORY', 'MEMORY'],
  ]);
  assert.deepEqual(entries('OrvaneWindowStackMode'), [
    ['NONE', 'NONE'],
    ['BELOW', 'BELOW'],
    ['ABOVE', 'ABOVE'],
  ]);
  assert.deepEqual(
    entries('OrvaneAlign'),
    positions.map((name, index) => [name, index])
  );
  assert.deepEqual(entries('OrvaneKeyGrabMode'), [
    ['TOPMOST', '2'],
    ['REGISTERED', '5'],
  ]);
  assert.deepEqual(entries('resolutionNames'), [
    ['0', 'FMS_IME_RESOLUTION_2K'],
    ['1', 'FMS_IME_RESOLUTION_4K'],
  ]);
});

test('The native manager is built on the extension object', () => {
  const runtime = new FakeRuntime();

  assert.equal(runtime.nativeManagerArguments.length, 1);
  assert.equal(runtime.nativeManagerArguments[0], runtime.extension);
});

test('The exported object is an OrvaneManager without members of its own', () => {
  const { orvane } = new FakeRuntime();

  assert.equal(orvane.constructor.name, 'OrvaneManager');
  assert.deepEqual(Object.keys(orvane), []);
});

test('Loading sends, logs and schedules nothing', () => {
  assert.deepEqual(new FakeRuntime().events, []);
});
