// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

const { orvane } = dravelt;

const unknown = (message) => ({ name: 'UnknownError', code: 9999, message });
const mismatch = (message) => ({ name: 'TypeMismatchError', code: 17, message });
const sent = () => testing.messages().filter(([what]) => what.startsWith('>'));

describe('getVersion', () => {
  test('gives the version', () => {
    assert.equal(orvane.getVersion(), '3.9');
  });

  test('asks once and logs each time', () => {
    orvane.getVersion();
    orvane.getVersion();
    assert.deepEqual(sent(), [
      ['> native sync', 'dravelt.orvane', '{"cmd":"OrvaneManager_getVersion","args":{}}'],
    ]);
    assert.deepEqual(testing.consoleLines(), [
      '[Orvane] OrvaneManager_getVersion : 3.9',
      '[Orvane] OrvaneManager_getVersion cache: 3.9',
    ]);
  });

  test('takes any arguments', () => {
    assert.equal(orvane.getVersion(1, {}, null), '3.9');
  });
});

describe('getUuid', () => {
  test('gives the text of the file in the data folder', () => {
    const uuid = orvane.getUuid();
    assert.ok(/^[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}$/.test(uuid));
    assert.equal(testing.readDataFile('uuid'), uuid);
  });

  test('asks once', () => {
    const uuid = orvane.getUuid();
    assert.equal(orvane.getUuid(), uuid);
    assert.equal(sent().length, 1);
    assert.deepEqual(testing.consoleLines(), [
      `[Orvane] OrvaneManager_getUuid : ${uuid}`,
      `[Orvane] OrvaneManager_getUuid cache: ${uuid}`,
    ]);
  });

  test('asks again after a failure', () => {
    testing.fail('aul_app_get_appid_bypid', -1, 'once');
    assert.throws(() => orvane.getUuid(), unknown('Invalid Choice'));
    assert.deepEqual(testing.consoleLines(), []);
    assert.equal(orvane.getUuid().length, 36);
    assert.equal(sent().length, 2);
  });
});

describe('getForegroundAppId', () => {
  test('gives the application that has the focus', () => {
    assert.equal(orvane.getForegroundAppId(), 'orvsuite00.Suite');
    testing.addApplication('otherapp00.Other', 2);
    testing.setFocus('otherapp00.Other');
    assert.equal(orvane.getForegroundAppId(), 'otherapp00.Other');
    assert.equal(sent()[0][2], '{"cmd":"OrvaneManager_getForegroundAppId","args":{}}');
  });

  test('throws when none has it', () => {
    testing.clearFocus();
    assert.throws(() => orvane.getForegroundAppId(), unknown('AppID is null'));
  });

  test('throws when the platform fails', () => {
    for (const name of ['app_manager_get_focused_app_context', 'app_context_get_app_id']) {
      testing.fail(name, -1, 'once');
      assert.throws(() => orvane.getForegroundAppId(), unknown('AppID is null'));
    }
    assert.equal(orvane.getForegroundAppId(), 'orvsuite00.Suite');
  });
});

describe('getAppState', () => {
  test('gives the own state without an id', () => {
    assert.equal(orvane.getAppState(), 'FOREGROUND');
    assert.equal(orvane.getAppState(null), 'FOREGROUND');
    assert.equal(orvane.getAppState(''), 'FOREGROUND');
    for (const message of sent()) {
      assert.equal(message[2], '{"cmd":"OrvaneManager_getAppState","args":{"appid":""}}');
    }
  });

  test('gives each state of another application', () => {
    const states = ['UNDEFINED', 'FOREGROUND', 'BACKGROUND', 'SERVICE', 'TERMINATED'];
    testing.addApplication('otherapp00.Other', 1);
    states.forEach((state, number) => {
      testing.setState('otherapp00.Other', number);
      assert.equal(orvane.getAppState('otherapp00.Other'), state);
    });
    assert.equal(
      sent()[0][2],
      '{"cmd":"OrvaneManager_getAppState","args":{"appid":"otherapp00.Other"}}'
    );
  });

  test('throws for one that does not run', () => {
    testing.addApplication('otherapp00.Other', 0);
    assert.throws(() => orvane.getAppState('otherapp00.Other'), unknown('Failed to get app state'));
    assert.throws(() => orvane.getAppState('nobody'), unknown('Failed to get app state'));
  });

  test('throws when the platform fails', () => {
    for (const name of ['app_manager_get_app_context', 'app_context_get_app_state']) {
      testing.fail(name, -1, 'once');
      assert.throws(() => orvane.getAppState(), unknown('Failed to get app state'));
    }
  });

  test('carries ids of any text', () => {
    const id = '"quotes" \\ \u00e9 \u{1F600} \n';
    assert.throws(() => orvane.getAppState(id), unknown('Failed to get app state'));
    assert.equal(JSON.parse(sent()[0][2]).args.appid, id);
  });

  test('wants a text', () => {
    assert.throws(
      () => orvane.getAppState(5),
      mismatch('Argument 1 "appid" must be a string, or null, but is the number 5.')
    );
    assert.deepEqual(sent(), []);
  });
});

describe('requestTvContextTask', () => {
  test('launches the last source', () => {
    const { OrvaneTarget, OrvaneAction } = orvane;
    const done = orvane.requestTvContextTask(
      OrvaneTarget.CONFIG_LAST_SOURCE,
      OrvaneAction.CONFIG_LAUNCH
    );
    assert.equal(done, true);
    assert.deepEqual(testing.contextTasks(), [['last:source', 'launch']]);
    assert.equal(
      sent()[0][2],
      '{"cmd":"OrvaneManager_requestTvContextTask","args":{"target":0,"action":0}}'
    );
  });

  test('throws when the context manager fails', () => {
    testing.fail('app_context_manager_init', -1, 'once');
    assert.throws(() => orvane.requestTvContextTask(0, 0), unknown('vcontext_init is failed'));
    assert.deepEqual(testing.contextTasks(), []);
    testing.fail('app_context_manager_request_task', -1, 'once');
    assert.throws(
      () => orvane.requestTvContextTask(0, 0),
      unknown('tvcontext_request_task is failed')
    );
  });

  test('wants values of the enumerations', () => {
    assert.throws(
      () => orvane.requestTvContextTask(1, 0),
      mismatch('Argument 1 "target" must be one of 0, but is the number 1.')
    );
    assert.throws(
      () => orvane.requestTvContextTask(0, '0'),
      mismatch('Argument 2 "action" must be one of 0, but is the string "0".')
    );
    assert.throws(
      () => orvane.requestTvContextTask(0),
      mismatch('Argument 2 "action" is missing: it must be one of 0.')
    );
    assert.deepEqual(sent(), []);
  });
});
