// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

const { orvane } = dravelt;

const resolution = 'com.korvale/featureconf/ime.resolution';
const mismatch = (message) => ({ name: 'TypeMismatchError', code: 17, message });
const unknown = (message) => ({ name: 'UnknownError', code: 9999, message });
const badFormat = {
  name: 'InvalidValuesError',
  code: WebAPIException.QM_INVALID_VALUES_ERR,
  message: 'Invalid input format. Please enter px or %.',
};
const sent = () => testing.messages().filter(([what]) => what.startsWith('>'));
const positions = () =>
  sent()
    .filter((message) => message[1] === 'dravelt://orvane/setIMEPosition')
    .map((message) => message[2]);

describe('setIMEPosition', () => {
  const in2k = () => testing.setFeature(resolution, 'int', '0');
  const in4k = () => testing.setFeature(resolution, 'int', '1');

  test('moves the keyboard', () => {
    in2k();
    assert.equal(orvane.setIMEPosition('10%', '20px', 'TOP_LEFT'), true);
    assert.deepEqual(sent(), [
      ['> native sync', 'dravelt.orvane', '{"cmd":"OrvaneManager_getIMEResolution","args":{}}'],
      ['> runtime sync', 'dravelt://orvane/setIMEPosition', '192,20,0'],
    ]);
    assert.deepEqual(testing.inputMethod().position, [192, 20, 0]);
  });

  test('without arguments moves it to the middle of the bottom edge', () => {
    in4k();
    orvane.setIMEPosition();
    orvane.setIMEPosition(null, null, null);
    orvane.setIMEPosition('', '');
    in2k();
    orvane.setIMEPosition();
    assert.deepEqual(positions(), ['1920,2160,7', '1920,2160,7', '1920,2160,7', '960,1080,7']);
  });

  test('takes any other resolution for the small one', () => {
    testing.setFeature(resolution, 'int', '7');
    orvane.setIMEPosition('50%', '33.3%');
    assert.deepEqual(positions(), ['960,359,7']);
  });

  test('scales percentages, not pixels', () => {
    in4k();
    orvane.setIMEPosition('50%', '12.5%');
    orvane.setIMEPosition('100px', '8px');
    assert.deepEqual(positions(), ['1920,270,7', '100,8,7']);
  });

  test('knows nine places', () => {
    const places = ['TOP', 'MIDDLE', 'BOTTOM'].flatMap((row) =>
      ['LEFT', 'CENTER', 'RIGHT'].map((column) => `${row}_${column}`)
    );
    in2k();
    places.forEach((place) => orvane.setIMEPosition('0px', '0px', place));
    assert.deepEqual(
      positions(),
      places.map((place, index) => `0,0,${index}`)
    );
  });

  test('refuses other formats before the runtime hears of them', () => {
    for (const value of ['1.25%', '-5px', '5 px', '5', '8.5px', 'px', '%', '50%px', 'x50%']) {
      assert.throws(() => orvane.setIMEPosition(value), badFormat);
      assert.throws(() => orvane.setIMEPosition('0px', value), badFormat);
    }
    assert.deepEqual(positions(), []);
  });

  test('throws when the resolution is not known', () => {
    testing.fail('system_info_get_custom_int', -1);
    assert.throws(() => orvane.setIMEPosition(), unknown('Failed to get ime resolution'));
    assert.deepEqual(positions(), []);
  });

  test('throws when the keyboard has a fixed place', () => {
    testing.setDynamicStyle(false);
    assert.throws(() => orvane.setIMEPosition('0px', '0px'), {
      name: 'NotSupportedError',
      code: 9,
      message: 'IME Position setting is not possible. IME Style is not dynamic.',
    });
  });

  test('throws when the runtime refuses', () => {
    const tooFar = `${'9'.repeat(30)}px`;
    assert.throws(
      () => orvane.setIMEPosition(tooFar),
      unknown('An error occurred in the operation of setIMEPosition.')
    );
  });

  test('wants texts and the name of a place', () => {
    assert.throws(
      () => orvane.setIMEPosition(5),
      mismatch('Argument 1 "x" must be a string, or null, but is the number 5.')
    );
    assert.throws(
      () => orvane.setIMEPosition('5px', {}),
      mismatch('Argument 2 "y" must be a string, or null, but is an object.')
    );
    const error = assert.throws(() => orvane.setIMEPosition('5px', '5px', 'LEFT'), { code: 17 });
    assert.includes(error.message, 'Argument 3 "align" must be one of "TOP_LEFT", "TOP_CENTER"');
    assert.throws(() => orvane.setIMEPosition('5px', '5px', 0), { code: 17 });
    assert.deepEqual(sent(), []);
  });
});

describe('setIMERecommendedWordsType', () => {
  test('switches the words on and off', () => {
    const types = orvane.OrvaneRecommendedWordsType;
    assert.equal(orvane.setIMERecommendedWordsType(types.RECOMMENDED_WORDS_ENABLE), true);
    assert.equal(testing.inputMethod().wordsEnabled, true);
    assert.equal(orvane.setIMERecommendedWordsType(types.RECOMMENDED_WORDS_DISABLE), true);
    assert.equal(testing.inputMethod().wordsEnabled, false);
    assert.deepEqual(sent(), [
      ['> runtime plain', 'dravelt://orvane/setIMERecommendedType', '1'],
      ['> runtime plain', 'dravelt://orvane/setIMERecommendedType', '0'],
    ]);
  });

  test('wants a value of the enumeration', () => {
    assert.throws(
      () => orvane.setIMERecommendedWordsType(2),
      mismatch('Argument 1 "Type" must be one of 0, 1, but is the number 2.')
    );
    assert.throws(
      () => orvane.setIMERecommendedWordsType(),
      mismatch('Argument 1 "Type" is missing: it must be one of 0, 1.')
    );
  });
});

describe('setIMERecommendedWords', () => {
  test('gives the words to the keyboard', () => {
    assert.equal(orvane.setIMERecommendedWords(['one', 'two']), true);
    assert.deepEqual(testing.inputMethod().words, ['one', 'two']);
    assert.deepEqual(sent(), [
      ['> runtime plain', 'dravelt://orvane/setIMERecommendedWords', 'one,two'],
    ]);
  });

  test('throws when the runtime refuses', () => {
    assert.throws(
      () => orvane.setIMERecommendedWords(['x'.repeat(100000)]),
      unknown('An error occurred in the operation of setIMERecommendedWords.')
    );
  });

  test('wants an array of texts', () => {
    assert.throws(
      () => orvane.setIMERecommendedWords(['one', 2]),
      mismatch('Argument 1 "words", element 1, must be a string, but is the number 2.')
    );
    assert.throws(() => orvane.setIMERecommendedWords('one'), { code: 17 });
    assert.throws(() => orvane.setIMERecommendedWords(), { code: 17 });
  });
});
