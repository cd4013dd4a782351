// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

const { orvane } = dravelt;

const keyPrivilege = 'http://tizen.org/privilege/tv.inputdevice';
const specialMode = 'http://dravelt.example/tv/metadata/register.keygrab.mode.special';
const badName = {
  name: 'InvalidValuesError',
  code: WebAPIException.QM_INVALID_VALUES_ERR,
  message: 'Parameter "Invalid OrvaneKeyName value passed for keyNameList parameter',
};
const mismatch = (message) => ({ name: 'TypeMismatchError', code: 17, message });
const unknown = (message) => ({ name: 'UnknownError', code: 9999, message });
const sent = () => testing.messages().filter(([what]) => what.startsWith('>'));
const texts = () => sent().map((message) => message[2]);

describe('generateKey', () => {
  test('injects the key', () => {
    assert.equal(orvane.generateKey('VolumeUp'), undefined);
    assert.deepEqual(testing.injectedKeys(), [[76, 2]]);
    assert.deepEqual(texts(), ['{"cmd":"OrvaneManager_generateKey","args":{"xKeyCode":76}}']);
    assert.deepEqual(testing.consoleLines(), [
      '[orvane.js] Conver Name[VolumeUp] to keyCode[76]',
      '[orvane.js] generateKey result : true',
    ]);
  });

  test('knows 24 keys and their hardware codes', () => {
    const codes = {
      VolumeUp: 76,
      VolumeDown: 75,
      VolumeMute: 74,
      ChannelUp: 96,
      ChannelDown: 95,
      ArrowLeft: 113,
      ArrowUp: 111,
      ArrowRight: 114,
      ArrowDown: 116,
      Enter: 36,
      Back: 9,
      GamepadHomekey: 572,
      MediaTrackPrevious: 232,
      MediaRewind: 176,
      MediaTrackNext: 233,
      MediaFastForward: 216,
      Search: 225,
      Exit: 182,
      Source: 72,
      MultiView: 505,
      Quenmar: 71,
      ARKVolume: 593,
      PlayBackGame: 571,
      More: 148,
    };
    for (const name of Object.keys(codes)) {
      orvane.generateKey(name);
    }
    assert.deepEqual(
      testing.injectedKeys(),
      Object.values(codes).map((code) => [code, 2])
    );
  });

  test('does not mind that the injection fails', () => {
    testing.fail('VirtualKey_Send_KeyCode', -1);
    assert.equal(orvane.generateKey('Enter'), undefined);
  });

  test('refuses a name that it does not know', () => {
    for (const name of ['Power', 'enter', '', 'toString', '__proto__']) {
      testing.forget();
      assert.throws(() => orvane.generateKey(name), {
        name: 'InvalidValuesError',
        code: WebAPIException.QM_INVALID_VALUES_ERR,
        message: 'Invalid OrvaneGenerateKeyName value passed for "keyName" parameter',
      });
      assert.deepEqual(sent(), []);
      assert.deepEqual(testing.consoleLines(), [
        `[orvane.js] generateKey - This ${name} is invalid!`,
      ]);
    }
  });

  test('wants a text', () => {
    assert.throws(
      () => orvane.generateKey(5),
      mismatch('Argument 1 "keyName" must be a string, but is the number 5.')
    );
    assert.throws(
      () => orvane.generateKey(),
      mismatch('Argument 1 "keyName" is missing: it must be a string.')
    );
    assert.throws(() => orvane.generateKey(null), { code: 17 });
  });
});

describe('registerKey', () => {
  test('registers each key', () => {
    testing.setPrivileges([keyPrivilege]);
    assert.equal(orvane.registerKey(['ColorF0Red', 'VolumeUp']), true);
    assert.deepEqual(sent(), [
      ['> runtime sync', 'tizen://api/inputdevice/registerKey', 'XF86Red'],
      ['> runtime sync', 'tizen://api/inputdevice/registerKey', 'XF86AudioRaiseVolume'],
    ]);
    assert.deepEqual(testing.keyGrabs(), [
      ['XF86AudioRaiseVolume', 0],
      ['XF86Red', 0],
    ]);
    assert.equal(testing.keyReaches('XF86Red'), 'orvsuite00.Suite');
    assert.deepEqual(testing.consoleLines(), [
      '[orvane.js]  Conver Name[ColorF0Red] to keyName[XF86Red]',
      '[orvane.js]  Conver Name[VolumeUp] to keyName[XF86AudioRaiseVolume]',
    ]);
  });

  test('sends nothing for an empty list', () => {
    assert.equal(orvane.registerKey([]), false);
    assert.deepEqual(sent(), []);
  });

  test('accepts the keys that every application receives', () => {
    testing.setPrivileges([keyPrivilege]);
    orvane.registerKey(['Back']);
    assert.deepEqual(texts(), ['XF86Back']);
  });

  test('accepts digits as numbers', () => {
    testing.setPrivileges([keyPrivilege]);
    assert.equal(orvane.registerKey([5, '6']), true);
    assert.deepEqual(texts(), ['5', '6']);
    assert.deepEqual(testing.consoleLines(), [
      '[orvane.js]  Conver Name[5] to keyName[5]',
      '[orvane.js]  Conver Name[6] to keyName[6]',
    ]);
  });

  test('registers none when one name is bad', () => {
    testing.setPrivileges([keyPrivilege]);
    assert.throws(() => orvane.registerKey(['ColorF0Red', 'NoKey', 'VolumeUp']), badName);
    assert.deepEqual(sent(), []);
    assert.deepEqual(testing.keyGrabs(), []);
    assert.deepEqual(testing.consoleLines(), [
      '[orvane.js]  Conver Name[ColorF0Red] to keyName[XF86Red]',
      '[orvane.js] registerKey - This NoKey is invalid!',
    ]);
  });

  test('throws when the runtime refuses', () => {
    assert.throws(
      () => orvane.registerKey(['ColorF0Red', 'VolumeUp']),
      unknown('An error occurred in the operation of registerKey.')
    );
    assert.deepEqual(texts(), ['XF86Red']);
    assert.includes(
      testing.explanations().join('\n'),
      '<tizen:privilege name="http://tizen.org/privilege/tv.inputdevice"/>'
    );
  });

  test('wants an array', () => {
    assert.throws(
      () => orvane.registerKey('Power'),
      mismatch('Argument 1 "keyNameList" must be an array, but is the string "Power".')
    );
    assert.throws(() => orvane.registerKey(), { code: 17 });
    assert.throws(() => orvane.registerKey(null), { code: 17 });
  });
});

describe('unregisterKey', () => {
  test('gives the keys back', () => {
    testing.setPrivileges([keyPrivilege]);
    orvane.registerKey(['ColorF0Red', 'VolumeUp']);
    testing.forget();
    assert.equal(orvane.unregisterKey(['ColorF0Red']), true);
    assert.deepEqual(sent(), [
      ['> runtime sync', 'tizen://api/inputdevice/unregisterKey', 'XF86Red'],
    ]);
    assert.deepEqual(testing.keyGrabs(), [['XF86AudioRaiseVolume', 0]]);
    assert.equal(orvane.unregisterKey([]), false);
  });

  test('checks the privilege before anything else', () => {
    assert.throws(() => orvane.unregisterKey('no array'), {
      name: 'SecurityError',
      code: 18,
      message:
        'Permission denied: add the line <tizen:privilege ' +
        `name="${keyPrivilege}"/> to the application's config.xml.`,
    });
    assert.deepEqual(sent(), []);
  });

  test('refuses a name that it does not know, in the words of registerKey', () => {
    testing.setPrivileges([keyPrivilege]);
    assert.throws(() => orvane.unregisterKey(['NoKey']), badName);
    assert.deepEqual(testing.consoleLines(), ['[orvane.js] registerKey - This NoKey is invalid!']);
  });

  test('throws when the runtime refuses', () => {
    testing.setPrivileges([keyPrivilege]);
    // A key of another device: the table has it, this set's remote control has not.
    const [last] = orvane.getSpecialSupportedKeys().slice(-1);
    assert.throws(
      () => orvane.unregisterKey([last.name]),
      unknown('An error occurred in the operation of unregisterKey.')
    );
  });

  test('wants an array', () => {
    testing.setPrivileges([keyPrivilege]);
    assert.throws(
      () => orvane.unregisterKey({}),
      mismatch('Argument 1 "keyNameList" must be an array, but is an object.')
    );
  });
});

describe('registerKeyInSpecialMode', () => {
  function allow() {
    testing.setPrivileges([keyPrivilege]);
    testing.setMetadata(specialMode, 'true');
  }

  test('grabs the keys in the mode', () => {
    allow();
    assert.equal(orvane.registerKeyInSpecialMode(['ColorF0Red'], 'TOPMOST'), true);
    assert.equal(orvane.registerKeyInSpecialMode(['VolumeUp'], 'REGISTERED'), true);
    assert.deepEqual(sent(), [
      [
        '> native sync',
        'dravelt.orvane',
        '{"cmd":"OrvaneManager_registerKeyInSpecialMode","args":{}}',
      ],
      ['> runtime sync', 'dravelt://orvane/RegisterKeyInSpecialMode', 'XF86Red,2'],
      [
        '> native sync',
        'dravelt.orvane',
        '{"cmd":"OrvaneManager_registerKeyInSpecialMode","args":{}}',
      ],
      ['> runtime sync', 'dravelt://orvane/RegisterKeyInSpecialMode', 'XF86AudioRaiseVolume,5'],
    ]);
    assert.deepEqual(testing.keyGrabs(), [
      ['XF86AudioRaiseVolume', 5],
      ['XF86Red', 2],
    ]);
  });

  test('is true for an empty list', () => {
    allow();
    assert.equal(orvane.registerKeyInSpecialMode([], 'TOPMOST'), true);
  });

  test('throws without the metadata, before the names are looked at', () => {
    const refused = {
      name: 'NotSupportedError',
      code: 9,
      message: 'Application does not have required metadata value',
    };
    assert.throws(() => orvane.registerKeyInSpecialMode(['NoKey'], 'TOPMOST'), refused);
    testing.setMetadata(specialMode, 'TRUE');
    assert.throws(() => orvane.registerKeyInSpecialMode(['NoKey'], 'TOPMOST'), refused);
    assert.deepEqual(testing.consoleLines(), []);
  });

  test('refuses a name that it does not know', () => {
    allow();
    assert.throws(
      () => orvane.registerKeyInSpecialMode(['ColorF0Red', 'NoKey'], 'TOPMOST'),
      badName
    );
    assert.deepEqual(testing.keyGrabs(), []);
    assert.deepEqual(testing.consoleLines(), [
      '[orvane.js]  Conver Name[ColorF0Red] to keyName[XF86Red]',
      '[orvane.js] registerKeyInSpecialMode - This NoKey is invalid!',
    ]);
  });

  test('throws when the runtime refuses', () => {
    testing.setMetadata(specialMode, 'true');
    assert.throws(
      () => orvane.registerKeyInSpecialMode(['ColorF0Red'], 'TOPMOST'),
      unknown('An error occurred in the operation of registerKeyInSpecialMode.')
    );
  });

  test('wants a list and the name of a mode', () => {
    allow();
    assert.throws(
      () => orvane.registerKeyInSpecialMode(['ColorF0Red'], '2'),
      mismatch('Argument 2 "mode" must be one of "TOPMOST", "REGISTERED", but is the string "2".')
    );
    assert.throws(() => orvane.registerKeyInSpecialMode('ColorF0Red', 'TOPMOST'), { code: 17 });
    assert.throws(() => orvane.registerKeyInSpecialMode(['ColorF0Red']), { code: 17 });
    assert.deepEqual(sent(), []);
  });
});

describe('getSpecialSupportedKeys', () => {
  test('lists 141 keys in their order', () => {
    const keys = orvane.getSpecialSupportedKeys();
    const names = keys.map(({ name }) => name);
    assert.equal(keys.length, 141);
    assert.deepEqual(keys[0], { name: 'Power', code: 409 });
    assert.deepEqual(keys[113], { name: 'AIMenu', code: 10669 });
    assert.deepEqual(names.slice(102, 112), ['0', '1', '2', '3', '4', '5', '6', '7', '8', '9']);
    assert.equal(new Set(names).size, 141);
    assert.deepEqual(sent(), []);
  });

  test('has the codes of the table for registering', () => {
    const code = (wanted) =>
      orvane.getSpecialSupportedKeys().find(({ name }) => name === wanted).code;
    assert.equal(code('MediaRewind'), 412);
    assert.equal(code('MediaFastForward'), 417);
    assert.equal(code('Menu'), 10133);
    assert.equal(code('SysMenu'), 10133);
  });

  test('leaves out the keys that every application receives', () => {
    const names = orvane.getSpecialSupportedKeys().map(({ name }) => name);
    for (const name of ['ArrowLeft', 'ArrowUp', 'ArrowRight', 'ArrowDown', 'Enter', 'Back']) {
      assert.ok(!names.includes(name), name);
    }
  });

  test('gives objects that cannot be changed', () => {
    'use strict';

    const [key] = orvane.getSpecialSupportedKeys();
    for (const change of [
      () => {
        key.name = 'x';
      },
      () => {
        key.code = 1;
      },
      () => {
        key.more = 1;
      },
    ]) {
      assert.throws(change, { name: 'TypeError' });
    }
    assert.deepEqual(Object.keys(key), ['name', 'code']);
  });
});
