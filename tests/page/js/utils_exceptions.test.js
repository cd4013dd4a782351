// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

const { privilege, checkPrivilegeAccess } = xwalk.utils;

describe('WebAPIException', () => {
  function check(exception, code, name, message) {
    assert.equal(exception.code, code);
    assert.equal(exception.name, name);
    assert.equal(exception.message, message);
  }

  test('of a code and a message', () => {
    check(new WebAPIException(9, 'no'), 9, 'NotSupportedError', 'no');
    check(new WebAPIException(17, 'no'), 17, 'TypeMismatchError', 'no');
    check(new WebAPIException(18, 'no'), 18, 'SecurityError', 'no');
    check(new WebAPIException(9999, 'no'), 9999, 'UnknownError', 'no');
    check(new WebAPIException(4711, 'no'), 4711, 'UnknownError', 'no');
  });

  test('of a name and a message', () => {
    check(new WebAPIException('NotFoundError', 'no'), 8, 'NotFoundError', 'no');
    check(new WebAPIException('OddError', 'no'), 9999, 'OddError', 'no');
  });

  test('of a message alone', () => {
    check(new WebAPIException('what happened'), 9999, 'UnknownError', 'what happened');
    check(new WebAPIException(), 9999, 'UnknownError', '');
  });

  test('of an object', () => {
    const error = { code: 9, name: 'NotSupportedError', message: 'no' };
    check(new WebAPIException(error), 9, 'NotSupportedError', 'no');
    check(new WebAPIException({ name: 'SecurityError' }), 18, 'SecurityError', '');
    check(new WebAPIException({ code: 17 }), 17, 'TypeMismatchError', '');
    check(new WebAPIException({ code: 5000, name: 'Mine', message: 5 }), 5000, 'Mine', '5');
    check(new WebAPIException({}), 9999, 'UnknownError', '');
  });

  test('constants', () => {
    const codes = {
      NOT_FOUND_ERR: 8,
      NOT_SUPPORTED_ERR: 9,
      TYPE_MISMATCH_ERR: 17,
      SECURITY_ERR: 18,
      INVALID_VALUES_ERR: 22,
      UNKNOWN_ERR: 9999,
      QM_INVALID_VALUES_ERR: 22,
      QM_UNKNOWN_ERR: 9999,
    };
    for (const constant of Object.keys(codes)) {
      assert.equal(WebAPIException[constant], codes[constant], constant);
    }
    const invalid = new WebAPIException(WebAPIException.QM_INVALID_VALUES_ERR, 'x');
    assert.equal(invalid.name, 'InvalidValuesError');
  });

  test('is an Error with a stack', () => {
    const exception = new WebAPIException(9, 'no');
    assert.ok(exception instanceof Error);
    assert.ok(exception instanceof WebAPIError);
    assert.ok(exception.stack.length > 0);
    assert.equal(String(exception), 'NotSupportedError: no');
  });

  test('cannot be changed', () => {
    const exception = new WebAPIException(9, 'no');
    for (const key of ['code', 'name', 'message']) {
      assert.throws(
        () => {
          'use strict';

          exception[key] = 'other';
        },
        { name: 'TypeError' }
      );
    }
  });
});

describe('privileges', () => {
  test('have short names', () => {
    assert.equal(privilege.TV_INPUT_DEVICE, 'http://tizen.org/privilege/tv.inputdevice');
  });

  test('that the application has pass', () => {
    testing.setPrivileges([privilege.TV_INPUT_DEVICE]);
    assert.equal(checkPrivilegeAccess(privilege.TV_INPUT_DEVICE), undefined);
  });

  test('that it has not are refused with the line to add', () => {
    assert.throws(() => checkPrivilegeAccess(privilege.TV_INPUT_DEVICE), {
      code: 18,
      name: 'SecurityError',
      message:
        'Permission denied: add the line <tizen:privilege ' +
        'name="http://tizen.org/privilege/tv.inputdevice"/> to the application\'s config.xml.',
    });
  });
});

describe('globals', () => {
  test('are the same object each time', () => {
    assert.ok(xwalk === globalThis.xwalk);
    const { NativeManager } = xwalk.utils;
    assert.ok(NativeManager === xwalk.utils.NativeManager);
    assert.ok(WebAPIException === globalThis.WebAPIException);
    assert.ok(widget === globalThis.widget);
  });

  test('can be replaced by the page', () => {
    globalThis.console = { log: () => 'mine' };
    assert.equal(console.log('x'), 'mine');
  });
});
