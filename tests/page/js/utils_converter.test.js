// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

const { converter, type } = xwalk.utils;

const refuses = (run, message) =>
  assert.throws(run, { name: 'TypeMismatchError', code: 17, message });

describe('converter', () => {
  test('toDouble', () => {
    assert.equal(converter.toDouble(76, false), 76);
    assert.equal(converter.toDouble('1.5', false), 1.5);
    assert.equal(converter.toDouble(null, true), null);
    assert.equal(converter.toDouble(null, false), 0);
    refuses(() => converter.toDouble('key', false), 'Cannot convert the string "key" to a number.');
    refuses(() => converter.toDouble(NaN), 'Cannot convert the number NaN to a number.');
    refuses(() => converter.toDouble(Infinity), 'Cannot convert the number Infinity to a number.');
    refuses(() => converter.toDouble(undefined), 'Cannot convert undefined to a number.');
    refuses(
      () => converter.toDouble(Symbol('s')),
      'Cannot convert the symbol Symbol(s) to a number.'
    );
  });

  test('whole numbers are cut and kept in their range', () => {
    assert.equal(converter.toLong(7.9), 7);
    assert.equal(converter.toLong(-7.9), -7);
    assert.equal(converter.toLong(-0.5), 0);
    assert.equal(converter.toLong(1e12), 2147483647);
    assert.equal(converter.toUnsignedLong(-1), 0);
    assert.equal(converter.toByte(200), 127);
    assert.equal(converter.toOctet('12'), 12);
    assert.equal(converter.toShort(-40000), -32768);
    assert.equal(converter.toUnsignedShort(70000), 65535);
    assert.equal(converter.toLongLong(1e300), Number.MAX_SAFE_INTEGER);
    assert.equal(converter.toUnsignedLongLong(-5), 0);
    assert.equal(converter.toLong(null, true), null);
    refuses(() => converter.toLong({}), 'Cannot convert an object to a whole number.');
  });

  test('toString', () => {
    assert.equal(converter.toString(5), '5');
    assert.equal(converter.toString(null), 'null');
    assert.equal(converter.toString(null, true), null);
    refuses(
      () =>
        converter.toString({
          toString() {
            throw new Error('no');
          },
        }),
      'Cannot convert an object to a string.'
    );
  });

  test('toBoolean', () => {
    assert.equal(converter.toBoolean('x'), true);
    assert.equal(converter.toBoolean(0), false);
    assert.equal(converter.toBoolean(null, true), null);
  });

  test('types without a conversion pass or are refused', () => {
    const list = [1];
    const object = { a: 1 };
    const run = () => 1;
    assert.equal(converter.toArray(list), list);
    assert.equal(converter.toDictionary(object), object);
    assert.equal(converter.toFunction(run), run);
    assert.equal(converter.toFunction(null, true), null);
    refuses(() => converter.toArray(object), 'Cannot convert an object to an array.');
    refuses(() => converter.toDictionary(list), 'Cannot convert an array to an object.');
    refuses(() => converter.toFunction(null), 'Cannot convert null to a function.');
  });

  test('toEnum', () => {
    assert.equal(converter.toEnum('a', ['a', 'b']), 'a');
    assert.equal(converter.toEnum('1', [0, 1]), 1);
    assert.equal(converter.toEnum(null, ['a'], true), null);
    refuses(
      () => converter.toEnum('c', ['a', 'b']),
      'Cannot convert the string "c" to one of "a", "b".'
    );
  });

  test('toPlatformObject', () => {
    const date = new Date();
    assert.equal(converter.toPlatformObject(date, Date), date);
    assert.equal(converter.toPlatformObject(date, [Map, Date]), date);
    assert.equal(converter.toPlatformObject(null, Date, true), null);
    refuses(
      () => converter.toPlatformObject({}, [Map, Date]),
      'Cannot convert an object to an object made by Map or Date.'
    );
  });
});

describe('type', () => {
  test('tells types apart', () => {
    assert.ok(type.isNull(null) && !type.isNull(undefined));
    assert.ok(type.isUndefined(undefined) && !type.isUndefined(null));
    assert.ok(type.isNullOrUndefined(null) && type.isNullOrUndefined(undefined));
    assert.ok(type.isBoolean(false) && !type.isBoolean(0));
    assert.ok(type.isNumber(NaN) && !type.isNumber('1'));
    assert.ok(type.isString('') && !type.isString(Object('')));
    assert.ok(type.isFunction(() => 1) && !type.isFunction({}));
    assert.ok(type.isArray([]) && !type.isArray({ length: 1 }));
    assert.ok(type.isDate(new Date()) && !type.isDate(1));
    assert.ok(type.isObject([]) && type.isObject({}) && !type.isObject(null));
    assert.ok(type.isEmptyObject({}) && !type.isEmptyObject({ a: 1 }) && !type.isEmptyObject(null));
    assert.ok(type.isA(new Map(), Map) && !type.isA({}, Map));
  });

  test('lists the values of an enumeration in their order', () => {
    assert.deepEqual(type.getValues({ TOPMOST: '2', REGISTERED: '5' }), ['2', '5']);
  });

  test('looks into arrays', () => {
    assert.ok(type.arrayContains(['a', 'b'], 'b'));
    assert.ok(!type.arrayContains([1], '1'));
  });
});
