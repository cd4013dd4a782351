// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

const { validator, type: typeUtils } = xwalk.utils;
const { Types } = validator;

const mismatch = (message) => ({ name: 'TypeMismatchError', code: 17, message });

function strict(rule, ...values) {
  return validator.validateArgsStrict(values, [{ name: 'it', ...rule }]);
}

function refuses(rule, value, wanted, what) {
  assert.throws(
    () => strict(rule, value),
    mismatch(`Argument 1 "it" must be ${wanted}, but is ${what}.`)
  );
}

describe('validateArgsStrict', () => {
  test('gives the arguments by name', () => {
    const args = validator.validateArgsStrict(
      ['text', 5],
      [
        { name: 'first', type: Types.STRING },
        { name: 'second', type: Types.LONG },
      ]
    );
    assert.equal(args.first, 'text');
    assert.equal(args.second, 5);
  });

  test('takes the arguments object of a function', () => {
    function method() {
      return validator.validateArgsStrict(arguments, [{ name: 'a', type: Types.STRING }]);
    }
    assert.equal(method('x').a, 'x');
    assert.throws(() => method(), mismatch('Argument 1 "a" is missing: it must be a string.'));
  });

  test('accepts a third argument', () => {
    const rules = [{ name: 'a', type: Types.LONG }];
    assert.equal(validator.validateArgsStrict([1], rules, true).a, 1);
  });

  test('ignores arguments beyond its rules', () => {
    assert.equal(strict({ type: Types.STRING }, 'a', 'b').it, 'a');
  });

  test('names the argument that is wrong', () => {
    const rules = [
      { name: 'first', type: Types.STRING },
      { name: 'second', type: Types.BOOLEAN },
    ];
    assert.throws(
      () => validator.validateArgsStrict(['a', 'b'], rules),
      mismatch('Argument 2 "second" must be a boolean, but is the string "b".')
    );
  });

  test('throws an exception of the platform', () => {
    const error = assert.throws(() => strict({ type: Types.STRING }, 1));
    assert.ok(error instanceof WebAPIException);
    assert.ok(error instanceof Error);
  });

  test('has every type of the library under its own name', () => {
    for (const name of ['STRING', 'ARRAY', 'ENUM', 'FUNCTION', 'LONG', 'BOOLEAN', 'DICTIONARY']) {
      assert.equal(Types[name], name);
    }
  });

  test('says which type it does not have', () => {
    const error = assert.throws(() => strict({ type: 'COLOUR' }, 1), { name: 'TypeError' });
    assert.includes(error.message, '"COLOUR"');
  });
});

describe('optional and nullable', () => {
  test('optional may be absent or undefined, not null', () => {
    const rule = { type: Types.STRING, optional: true };
    assert.equal(strict(rule).it, undefined);
    assert.equal(strict(rule, undefined).it, undefined);
    refuses(rule, null, 'a string', 'null');
  });

  test('nullable may be null, not absent', () => {
    const rule = { type: Types.STRING, nullable: true };
    assert.equal(strict(rule, null).it, null);
    assert.throws(
      () => strict(rule),
      mismatch('Argument 1 "it" is missing: it must be a string, or null.')
    );
  });

  test('both together still want the type', () => {
    const rule = { type: Types.LONG, optional: true, nullable: true };
    assert.equal(strict(rule, null).it, null);
    assert.equal(strict(rule).it, undefined);
    refuses(rule, 'x', 'a whole number from -2147483648 to 2147483647, or null', 'the string "x"');
  });

  test('has tells which arguments were given', () => {
    const rules = [
      { name: 'a', type: Types.STRING },
      { name: 'b', type: Types.STRING, optional: true },
      { name: 'c', type: Types.STRING, nullable: true },
    ];
    const args = validator.validateArgsStrict(['x', undefined, null], rules);
    assert.deepEqual(args.has, { a: true, b: false, c: true });
  });
});

describe('types, strictly', () => {
  test('STRING', () => {
    assert.equal(strict({ type: Types.STRING }, '').it, '');
    refuses({ type: Types.STRING }, 5, 'a string', 'the number 5');
    refuses({ type: Types.STRING }, Object('x'), 'a string', 'an object');
  });

  test('BOOLEAN', () => {
    assert.equal(strict({ type: Types.BOOLEAN }, false).it, false);
    refuses({ type: Types.BOOLEAN }, 0, 'a boolean', 'the number 0');
    refuses({ type: Types.BOOLEAN }, 'true', 'a boolean', 'the string "true"');
  });

  test('FUNCTION', () => {
    const run = () => 1;
    assert.equal(strict({ type: Types.FUNCTION }, run).it, run);
    refuses({ type: Types.FUNCTION }, {}, 'a function', 'an object');
  });

  test('whole numbers and their ranges', () => {
    const ranges = {
      BYTE: [-128, 127],
      OCTET: [0, 255],
      SHORT: [-32768, 32767],
      UNSIGNED_SHORT: [0, 65535],
      LONG: [-2147483648, 2147483647],
      UNSIGNED_LONG: [0, 4294967295],
      LONG_LONG: [-9007199254740991, 9007199254740991],
      UNSIGNED_LONG_LONG: [0, 9007199254740991],
    };
    for (const name of Object.keys(ranges)) {
      const [lowest, highest] = ranges[name];
      const wanted = `a whole number from ${lowest} to ${highest}`;
      assert.equal(strict({ type: Types[name] }, lowest).it, lowest);
      assert.equal(strict({ type: Types[name] }, highest).it, highest);
      refuses({ type: Types[name] }, highest + 1, wanted, `the number ${highest + 1}`);
      refuses({ type: Types[name] }, lowest - 1, wanted, `the number ${lowest - 1}`);
      refuses({ type: Types[name] }, 1.5, wanted, 'the number 1.5');
      refuses({ type: Types[name] }, NaN, wanted, 'the number NaN');
      refuses({ type: Types[name] }, '1', wanted, 'the string "1"');
    }
  });

  test('DOUBLE', () => {
    assert.equal(strict({ type: Types.DOUBLE }, 1.5).it, 1.5);
    refuses({ type: Types.DOUBLE }, Infinity, 'a finite number', 'the number Infinity');
    refuses({ type: Types.DOUBLE }, NaN, 'a finite number', 'the number NaN');
    refuses({ type: Types.DOUBLE }, '1.5', 'a finite number', 'the string "1.5"');
  });

  test('ENUM compares without conversion', () => {
    const texts = { type: Types.ENUM, values: ['TOPMOST', 'REGISTERED'] };
    assert.equal(strict(texts, 'TOPMOST').it, 'TOPMOST');
    refuses(texts, 'topmost', 'one of "TOPMOST", "REGISTERED"', 'the string "topmost"');
  });

  test('ENUM of numbers', () => {
    const numbers = { type: Types.ENUM, values: typeUtils.getValues({ OFF: 0, ON: 1 }) };
    assert.equal(strict(numbers, 0).it, 0);
    refuses(numbers, '0', 'one of 0, 1', 'the string "0"');
    refuses(numbers, 2, 'one of 0, 1', 'the number 2');
    refuses(numbers, true, 'one of 0, 1', 'the boolean true');
  });

  test('ARRAY of anything', () => {
    const list = [1, 'two', null];
    assert.equal(strict({ type: Types.ARRAY }, list).it, list);
    refuses({ type: Types.ARRAY }, 'list', 'an array', 'the string "list"');
    refuses({ type: Types.ARRAY }, { length: 0 }, 'an array', 'an object');
  });

  test('ARRAY of one type', () => {
    const words = { type: Types.ARRAY, values: Types.STRING };
    assert.deepEqual(strict(words, []).it, []);
    assert.deepEqual(strict(words, ['a', 'b']).it, ['a', 'b']);
    assert.throws(
      () => strict(words, ['a', 5]),
      mismatch('Argument 1 "it", element 1, must be a string, but is the number 5.')
    );
    refuses(words, 5, 'an array whose elements are each a string', 'the number 5');
  });

  test('ARRAY of objects of one constructor', () => {
    const dates = { type: Types.ARRAY, values: Date };
    assert.equal(strict(dates, [new Date()]).it.length, 1);
    assert.throws(
      () => strict(dates, [{}]),
      mismatch('Argument 1 "it", element 0, must be an object made by Date, but is an object.')
    );
  });

  test('DICTIONARY', () => {
    const object = { key: 'a' };
    assert.equal(strict({ type: Types.DICTIONARY }, object).it, object);
    refuses({ type: Types.DICTIONARY }, [], 'an object', 'an array');
    refuses({ type: Types.DICTIONARY }, 'x', 'an object', 'the string "x"');
    refuses({ type: Types.DICTIONARY }, () => 1, 'an object', 'a function');
    refuses({ type: Types.DICTIONARY }, null, 'an object', 'null');
  });

  test('DICTIONARY with rules for its members', () => {
    const rule = {
      type: Types.DICTIONARY,
      values: [
        { name: 'key', type: Types.STRING },
        { name: 'count', type: Types.LONG, optional: true },
      ],
    };
    assert.equal(strict(rule, { key: 'a' }).it.key, 'a');
    assert.throws(
      () => strict(rule, { key: 'a', count: 'many' }),
      mismatch(
        'Argument 1 "it", member "count", must be a whole number from -2147483648 to 2147483647, ' +
          'but is the string "many".'
      )
    );
    assert.throws(
      () => strict(rule, {}),
      mismatch('Argument 1 "it", member "key", must be a string, but is undefined.')
    );
  });

  test('LISTENER', () => {
    const rule = { type: Types.LISTENER, values: ['onadded', 'onremoved'] };
    const listener = { onadded() {} };
    assert.equal(strict(rule, listener).it, listener);
    assert.throws(
      () => strict(rule, { onadded: 5 }),
      mismatch('Argument 1 "it", callback "onadded", must be a function, but is the number 5.')
    );
    refuses(rule, () => 1, 'an object with the functions onadded, onremoved', 'a function');
  });

  test('PLATFORM_OBJECT', () => {
    const date = new Date();
    assert.equal(strict({ type: Types.PLATFORM_OBJECT, values: Date }, date).it, date);
    assert.equal(strict({ type: Types.PLATFORM_OBJECT, values: [Map, Date] }, date).it, date);
    refuses(
      { type: Types.PLATFORM_OBJECT, values: [Map, Set] },
      date,
      'an object made by Map or Set',
      'an object'
    );
  });

  test('FILE_REFERENCE', () => {
    assert.equal(strict({ type: Types.FILE_REFERENCE }, 'wgt-private/a').it, 'wgt-private/a');
    assert.ok(strict({ type: Types.FILE_REFERENCE }, { fullPath: '/a' }).it);
    refuses({ type: Types.FILE_REFERENCE }, {}, 'a path or a file object', 'an object');
  });

  test('cuts long texts in its messages', () => {
    const error = assert.throws(() => strict({ type: Types.LONG }, 'x'.repeat(5000)));
    assert.ok(error.message.length < 200);
  });
});

describe('validateArgs', () => {
  const lenient = (rule, value) => validator.validateArgs([value], [{ name: 'it', ...rule }]).it;

  test('converts what can be converted', () => {
    assert.equal(lenient({ type: Types.LONG }, '5'), 5);
    assert.equal(lenient({ type: Types.LONG }, 5.9), 5);
    assert.equal(lenient({ type: Types.BYTE }, 1000), 127);
    assert.equal(lenient({ type: Types.DOUBLE }, '1.5'), 1.5);
    assert.equal(lenient({ type: Types.STRING }, 5), '5');
    assert.equal(lenient({ type: Types.BOOLEAN }, 'yes'), true);
    assert.equal(lenient({ type: Types.ENUM, values: [0, 1] }, '1'), 1);
  });

  test('refuses what cannot', () => {
    assert.throws(
      () => lenient({ type: Types.LONG }, 'many'),
      mismatch(
        'Argument 1 "it" must be a whole number from -2147483648 to 2147483647, ' +
          'but is the string "many".'
      )
    );
    assert.throws(() => lenient({ type: Types.ENUM, values: ['a'] }, 'b'), { code: 17 });
    assert.throws(() => lenient({ type: Types.FUNCTION }, 'b'), { code: 17 });
    assert.throws(() => lenient({ type: Types.STRING }, Symbol('s')), { code: 17 });
  });

  test('keeps the rules of optional and nullable', () => {
    assert.equal(lenient({ type: Types.STRING, nullable: true }, null), null);
    assert.throws(() => lenient({ type: Types.STRING }, null), { code: 17 });
  });
});

describe('isConstructorCall', () => {
  test('wants new', () => {
    function Thing() {}
    assert.equal(validator.isConstructorCall(new Thing(), Thing), true);
    assert.throws(
      () => validator.isConstructorCall(undefined, Thing),
      mismatch('Thing is a constructor: call it with new.')
    );
  });
});
