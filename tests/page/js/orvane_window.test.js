// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

const { orvane } = dravelt;

const panel = 'com.korvale/featureconf/ud_panel_supported';
const platformPrivilege = 'http://tizen.org/privilege/internal/default/platform';
const mismatch = (message) => ({ name: 'TypeMismatchError', code: 17, message });
const unknown = (message) => ({ name: 'UnknownError', code: 9999, message });
const sent = () => testing.messages().filter(([what]) => what.startsWith('>'));

describe('setEpopAppWindow', () => {
  test('puts the window into a quarter', () => {
    for (let quarter = 0; quarter < 5; quarter += 1) {
      assert.equal(orvane.setEpopAppWindow(quarter), true);
      assert.equal(testing.window().quarterPosition, quarter);
    }
    assert.deepEqual(sent()[0], [
      '> native sync',
      'dravelt.orvane',
      '{"cmd":"OrvaneManager_setEpopAppWindow","args":{}}',
    ]);
  });

  test('logs what it does', () => {
    orvane.setEpopAppWindow(2, null);
    assert.deepEqual(testing.consoleLines(), [
      'setEpopAppWindow post message position:2 anypositionmode:false',
      '[orvane.js] setEpopAppWindow message data true',
    ]);
  });

  test('moves the window anywhere', () => {
    assert.equal(orvane.setEpopAppWindow(5, true), true);
    assert.deepEqual(testing.window().position, [5, 0]);
    assert.equal(
      testing.consoleLines()[0],
      'setEpopAppWindow post message position:5 anypositionmode:true'
    );
  });

  test('refuses a quarter that there is not', () => {
    for (const [position, mode] of [[5], [-1, null], [5, false], [1000, undefined]]) {
      assert.throws(() => orvane.setEpopAppWindow(position, mode), {
        name: 'InvalidValuesError',
        code: WebAPIException.QM_INVALID_VALUES_ERR,
        message: 'Invalid value passed for epopPosition parameter',
      });
    }
    assert.deepEqual(sent(), []);
    assert.deepEqual(testing.consoleLines(), []);
  });

  test('throws on a panel that cannot do it', () => {
    const refused = {
      name: 'NotSupportedError',
      code: 9,
      message: 'setEpopappWindow is only supported on UHD models',
    };
    testing.setFeature(panel, 'bool', 'false');
    assert.throws(() => orvane.setEpopAppWindow(1), refused);
    testing.removeFeature(panel);
    assert.throws(() => orvane.setEpopAppWindow(1), refused);
    assert.equal(testing.window().quarterPosition, undefined);
  });

  test('throws when the window does not move', () => {
    globalThis.widget = { move: () => 'error', setQuarterPosition: () => 'error' };
    for (const [position, mode] of [[1], [1, true]]) {
      testing.forget();
      assert.throws(
        () => orvane.setEpopAppWindow(position, mode),
        unknown('Unknown system error occurred')
      );
      assert.equal(testing.consoleLines()[1], '[orvane.js] setEpopAppWindow error 9999');
    }
  });

  test('wants a whole number and a boolean', () => {
    assert.throws(() => orvane.setEpopAppWindow('1'), { code: 17 });
    assert.throws(() => orvane.setEpopAppWindow(), { code: 17 });
    assert.throws(
      () => orvane.setEpopAppWindow(1, 'true'),
      mismatch('Argument 2 "anyPositionMode" must be a boolean, or null, but is the string "true".')
    );
  });
});

describe('setAppFocus', () => {
  test('gives the focus up and takes it', () => {
    assert.equal(orvane.setAppFocus(false), undefined);
    assert.equal(testing.focused(), '');
    assert.equal(orvane.setAppFocus(true), undefined);
    assert.equal(testing.focused(), 'orvsuite00.Suite');
    assert.deepEqual(sent(), [
      ['> runtime sync', 'tizen://setFocus', 'false'],
      ['> runtime sync', 'tizen://setFocus', 'true'],
    ]);
  });

  test('throws when the runtime refuses', () => {
    testing.terminate();
    assert.throws(
      () => orvane.setAppFocus(true),
      unknown('An error occurred in the operation of setAppFocus.')
    );
  });

  test('wants a boolean', () => {
    assert.throws(
      () => orvane.setAppFocus('true'),
      mismatch('Argument 1 "state" must be a boolean, but is the string "true".')
    );
    assert.throws(() => orvane.setAppFocus(), { code: 17 });
  });
});

describe('setWindowStackMode', () => {
  test('sets each mode', () => {
    for (const mode of ['ABOVE', 'BELOW', 'NONE']) {
      assert.equal(orvane.setWindowStackMode(mode), undefined);
      assert.equal(testing.window().stackMode, mode);
    }
    assert.deepEqual(sent()[0], ['> runtime sync', 'tizen://setWindowStackMode', 'ABOVE']);
  });

  test('throws when the runtime refuses', () => {
    testing.terminate();
    assert.throws(
      () => orvane.setWindowStackMode('ABOVE'),
      unknown('An error occurred in the operation of setWindowStackMode.')
    );
  });

  test('wants the name of a mode', () => {
    assert.throws(
      () => orvane.setWindowStackMode('above'),
      mismatch(
        'Argument 1 "mode" must be one of "NONE", "BELOW", "ABOVE", but is the string "above".'
      )
    );
  });
});

describe('setAuxHint', () => {
  const allow = () => testing.setPrivileges([platformPrivilege]);

  test('sets the hint', async () => {
    allow();
    const got = await new Promise((resolve) => {
      const returned = orvane.setAuxHint({ key: 'wm.policy', value: '1,2' }, (...args) =>
        resolve({ args, returned })
      );
    });
    assert.deepEqual(got, { args: [], returned: undefined });
    assert.deepEqual(testing.window().hints, { 'wm.policy': '1,2' });
    assert.deepEqual(sent(), [
      [
        '> native sync',
        'dravelt.orvane',
        '{"cmd":"OrvaneManager_checkPlatformLevelPrivilege","args":{}}',
      ],
      ['> runtime async', 'dravelt://orvane/setAuxHint', 'wm.policy,1,2'],
    ]);
    assert.deepEqual(testing.consoleLines(), ['[Orvane] setAuxHint successCallback']);
  });

  test('does without callbacks', async () => {
    allow();
    orvane.setAuxHint({ key: 'a', value: 'b' });
    orvane.setAuxHint({ key: 'c', value: 'd' }, null, null);
    await testing.sleep(1);
    assert.deepEqual(testing.window().hints, { a: 'b', c: 'd' });
  });

  test('gives a refusal to the error callback', async () => {
    allow();
    const error = await new Promise((resolve) => {
      orvane.setAuxHint({ key: '', value: 'x' }, null, resolve);
    });
    assert.equal(error.code, 9999);
    assert.equal(error.name, 'UnknownError');
    assert.deepEqual(testing.consoleLines(), ['[Orvane] setAuxHint errorCallback']);
  });

  test('throws without the privilege', () => {
    assert.throws(() => orvane.setAuxHint({ key: 'a', value: 'b' }), {
      name: 'SecurityError',
      code: 18,
      message: 'Permission denied',
    });
    assert.deepEqual(testing.window().hints, {});
    assert.includes(
      testing
        .logLines()
        .map(({ text }) => text)
        .join('\n'),
      `<tizen:privilege name="${platformPrivilege}"/>`
    );
  });

  test('wants texts in the hint', () => {
    assert.throws(
      () => orvane.setAuxHint({ value: 'b' }),
      mismatch('auxhint key should be string type')
    );
    assert.throws(
      () => orvane.setAuxHint({ key: 'a', value: 5 }),
      mismatch('auxhint value should be string type')
    );
    assert.throws(
      () => orvane.setAuxHint('a,b'),
      mismatch('Argument 1 "auxhint" must be an object, but is the string "a,b".')
    );
    assert.throws(() => orvane.setAuxHint({ key: 'a', value: 'b' }, 'run'), { code: 17 });
    assert.deepEqual(sent(), []);
  });
});
