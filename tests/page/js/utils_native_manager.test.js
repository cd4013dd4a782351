// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

const { NativeManager } = xwalk.utils;

// An extension that answers what the test has laid ready and keeps what it was sent.
class FakeExtension {
  constructor() {
    this.sent = [];
    this.reply = '{"status":"success"}';
    this.pending = [];
    this.internal = {
      sendSyncMessage: (text) => {
        this.sent.push(text);
        if (this.reply instanceof Error) {
          throw this.reply;
        }
        return this.reply;
      },
      setPendingReplies: (count) => this.pending.push(count),
    };
  }

  setMessageListener(listener) {
    this.listener = listener;
  }

  post(message) {
    this.listener(typeof message === 'string' ? message : JSON.stringify(message));
  }

  sendRuntimeMessage(...args) {
    this.sent.push(args);
    return 'plain';
  }

  sendRuntimeSyncMessage(...args) {
    this.sent.push(args);
    return 'sync';
  }

  sendRuntimeAsyncMessage(uri, text, callback) {
    this.sent.push([uri, text]);
    this.answer = callback;
  }
}

function make() {
  const extension = new FakeExtension();
  return { extension, native: new NativeManager(extension) };
}

describe('callSync', () => {
  test('sends the command and an empty object of arguments', () => {
    const { extension, native } = make();
    native.callSync('Thing_do');
    assert.deepEqual(extension.sent, ['{"cmd":"Thing_do","args":{}}']);
  });

  test('sends the arguments', () => {
    const { extension, native } = make();
    native.callSync('Thing_do', { appid: '' });
    assert.deepEqual(extension.sent, ['{"cmd":"Thing_do","args":{"appid":""}}']);
  });

  test('gives the reply', () => {
    const { extension, native } = make();
    extension.reply = '{"status":"success","result":[1]}';
    const reply = native.callSync('Thing_do');
    assert.ok(!native.isFailure(reply) && native.isSuccess(reply));
    assert.deepEqual(native.getResultObject(reply), [1]);
  });

  test('gives a failed reply', () => {
    const { extension, native } = make();
    extension.reply =
      '{"status":"error","error":{"code":9,"name":"NotSupportedError","message":"no"}}';
    const reply = native.callSync('Thing_do');
    assert.ok(native.isFailure(reply));
    const error = native.getErrorObject(reply);
    assert.ok(error instanceof WebAPIException);
    assert.deepEqual([error.code, error.name, error.message], [9, 'NotSupportedError', 'no']);
  });

  test('counts an untouched reply as no failure', () => {
    const { extension, native } = make();
    extension.reply = '{}';
    const reply = native.callSync('Thing_do');
    assert.ok(!native.isFailure(reply));
    assert.equal(native.getResultObject(reply), undefined);
  });

  test('counts a reply that cannot be read as a failure', () => {
    const bad = {
      '': 'The reply to "Thing_do" is empty.',
      '{"status":': 'The reply to "Thing_do" is not JSON: "{\\"status\\":".',
      5: 'The reply to "Thing_do" is not a JSON object: "5".',
      null: 'The reply to "Thing_do" is not a JSON object: "null".',
    };
    for (const text of Object.keys(bad)) {
      const { extension, native } = make();
      extension.reply = text;
      const reply = native.callSync('Thing_do');
      assert.ok(native.isFailure(reply));
      const error = native.getErrorObject(reply);
      assert.deepEqual([error.code, error.name, error.message], [9999, 'UnknownError', bad[text]]);
    }
  });

  test('counts a message that was not sent as a failure', () => {
    const { extension, native } = make();
    extension.reply = new Error('no reply within 10 s');
    const error = native.getErrorObject(native.callSync('Thing_do'));
    assert.equal(error.message, 'no reply within 10 s');
  });
});

describe('call', () => {
  test('adds an id to the arguments and leaves the object as it was', () => {
    const { extension, native } = make();
    const args = { state: 0 };
    native.call('Thing_do', args, () => {});
    assert.equal(extension.sent[0], '{"cmd":"Thing_do","args":{"state":0,"callbackId":1}}');
    assert.deepEqual(args, { state: 0 });
  });

  test('gives ids that are unique in the page', () => {
    const first = make();
    const second = make();
    first.native.call('a', {}, () => {});
    second.native.call('b', {}, () => {});
    first.native.call('c', {}, () => {});
    const ids = [...first.extension.sent, ...second.extension.sent].map(
      (text) => JSON.parse(text).args.callbackId
    );
    assert.equal(new Set(ids).size, 3);
  });

  test('gives the posted reply to its callback, once', () => {
    const { extension, native } = make();
    const got = [];
    native.call('a', {}, (reply) => got.push(['a', reply.result]));
    native.call('b', {}, (reply) => got.push(['b', reply.result]));
    extension.post({ status: 'success', result: 2, callbackId: 2 });
    extension.post({ status: 'success', result: 1, callbackId: 1 });
    extension.post({ status: 'success', result: 9, callbackId: 1 });
    assert.deepEqual(got, [
      ['b', 2],
      ['a', 1],
    ]);
    assert.includes(testing.consoleLines()[0], 'No call waits for the posted message');
  });

  test('gives a failure at once to the callback', () => {
    const { extension, native } = make();
    extension.reply =
      '{"status":"error","error":{"code":17,"name":"TypeMismatchError","message":"missing"}}';
    const got = [];
    native.call('a', {}, (reply) => got.push(native.getErrorObject(reply).message));
    assert.deepEqual(got, ['missing']);
    extension.post({ status: 'success', callbackId: 1 });
    assert.equal(got.length, 1);
  });

  test('keeps waiting after an untouched reply', () => {
    const { extension, native } = make();
    extension.reply = '{}';
    let got = 0;
    native.call('a', {}, () => {
      got += 1;
    });
    assert.equal(got, 0);
    extension.post({ status: 'success', callbackId: 1 });
    assert.equal(got, 1);
  });

  test('tells how many replies are to come', () => {
    const { extension, native } = make();
    native.call('a', {}, () => {});
    native.call('b', {}, () => {});
    extension.post({ callbackId: 2 });
    extension.post({ callbackId: 1 });
    assert.deepEqual(extension.pending, [1, 2, 1, 0]);
  });

  test('works with an extension that does not count', () => {
    const extension = new FakeExtension();
    delete extension.internal.setPendingReplies;
    const native = new NativeManager(extension);
    let got = false;
    native.call('a', {}, () => {
      got = true;
    });
    extension.post({ callbackId: 1 });
    assert.ok(got);
  });

  test('lets a callback make calls', () => {
    const { extension, native } = make();
    const got = [];
    native.call('a', {}, () => {
      native.call('b', {}, () => got.push('inner'));
      got.push('outer');
    });
    extension.post({ callbackId: 1 });
    extension.post({ callbackId: 2 });
    assert.deepEqual(got, ['outer', 'inner']);
  });

  test('takes a call without a callback', () => {
    const { extension, native } = make();
    native.call('a', {});
    extension.post({ callbackId: 1 });
    assert.deepEqual(extension.pending, [1, 0]);
  });
});

describe('posted messages', () => {
  test('reach a listener each time', () => {
    const { extension, native } = make();
    const got = [];
    native.addListener('changes', (message) => got.push(message.value));
    extension.post({ listenerId: 'changes', value: 1 });
    extension.post({ listenerId: 'changes', value: 2 });
    native.removeListener('changes');
    extension.post({ listenerId: 'changes', value: 3 });
    assert.deepEqual(got, [1, 2]);
  });

  test('that cannot be read are told and dropped', () => {
    const { extension } = make();
    extension.post('not json');
    extension.post('null');
    extension.post({ callbackId: 'toString' });
    extension.listener(new ArrayBuffer(4));
    assert.deepEqual(testing.consoleLines(), [
      'An extension posted what is no JSON object: "not json".',
      'An extension posted what is no JSON object: "null".',
      'No call waits for the posted message "{\\"callbackId\\":\\"toString\\"}".',
    ]);
  });
});

describe('the rest', () => {
  test('callIfPossible calls functions and nothing else', () => {
    const { native } = make();
    const got = [];
    native.callIfPossible((...args) => got.push(args), 1, 2);
    native.callIfPossible(null, 1);
    native.callIfPossible(undefined);
    native.callIfPossible(() => got.push('none'));
    assert.deepEqual(got, [[1, 2], 'none']);
  });

  test('runtime messages go to the extension object', () => {
    const { extension, native } = make();
    assert.equal(native.sendRuntimeMessage('x://a', 1), 'plain');
    assert.equal(native.sendRuntimeSyncMessage('x://b', 'text'), 'sync');
    assert.deepEqual(extension.sent, [
      ['x://a', 1],
      ['x://b', 'text'],
    ]);
  });

  test('answers to asynchronous runtime messages come as replies', () => {
    const answers = {
      success: false,
      '{"status":"success"}': false,
      error: true,
      '': true,
      '{"status":"error","error":{"code":9999,"name":"UnknownError","message":"no"}}': true,
    };
    for (const answer of Object.keys(answers)) {
      const { extension, native } = make();
      let reply;
      native.sendRuntimeAsyncMessage('x://c', 'text', (got) => {
        reply = got;
      });
      extension.answer(answer);
      assert.equal(native.isFailure(reply), answers[answer], answer);
    }
  });

  test('a refusal in a word becomes an error that quotes it', () => {
    const { extension, native } = make();
    let error;
    native.sendRuntimeAsyncMessage('x://c', 'text', (reply) => {
      error = native.getErrorObject(reply);
    });
    extension.answer('error');
    assert.deepEqual(
      [error.code, error.name, error.message],
      [9999, 'UnknownError', 'The runtime answered "error" to "x://c".']
    );
  });

  test('isFailure takes anything', () => {
    const { native } = make();
    for (const value of [undefined, null, 5, 'error', {}, []]) {
      assert.ok(!native.isFailure(value));
    }
  });
});
