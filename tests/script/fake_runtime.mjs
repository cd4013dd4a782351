// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Runs the built script text in a JavaScript context of its own, over a runtime that only writes
// down what it is asked and answers what the test has laid ready.

import vm from 'node:vm';
import { buildScriptText } from '../../src/orvane/build/script_text.mjs';

export const scriptText = await buildScriptText();

// An exception of the web runtime; its codes are texts here, so that a mix-up shows.
export class FakeWebAPIException extends Error {
  constructor(code, message) {
    super(message);
    this.code = code;
  }
}
for (const code of [
  'QM_INVALID_VALUES_ERR',
  'QM_UNKNOWN_ERR',
  'NOT_SUPPORTED_ERR',
  'TYPE_MISMATCH_ERR',
]) {
  FakeWebAPIException[code] = code;
}

const typeNames = ['STRING', 'ARRAY', 'ENUM', 'FUNCTION', 'LONG', 'BOOLEAN', 'DICTIONARY'];

// A value as it looks from this context: values of another one have other prototypes.
const plain = (value) => (value === undefined ? undefined : JSON.parse(JSON.stringify(value)));

export class FakeRuntime {
  constructor({ text = scriptText } = {}) {
    this.events = []; // everything asked of the runtime, in order: [what, ...arguments]
    this.replies = {}; // native message name -> reply
    this.answers = []; // answers to runtime messages, first to last; the last one stays
    this.pending = []; // receivers of asynchronous native and runtime messages
    this.timers = [];
    this.privilegeError = null;
    this.argumentError = null;
    this.extension = { name: 'the extension object' };
    this.context = vm.createContext(this.globals());
    this.text = text;
    this.orvane = this.evaluate('exports');
  }

  // Evaluates the script as a host does and returns the value of an expression at its end.
  evaluate(expression) {
    const source = `(function (extension) { "use strict"; let exports = {}; ${this.text}
      ;return ${expression}; })`;
    return vm.runInContext(source, this.context)(this.extension);
  }

  // Runs page code, the body of a function, with dravelt.orvane in reach.
  runPage(source) {
    this.context.dravelt = { orvane: this.orvane };
    return vm.runInContext(`(function () { "use strict"; ${source} })()`, this.context);
  }

  // Answers the oldest asynchronous message.
  answerPending(reply) {
    this.pending.shift()(reply);
  }

  runTimers() {
    this.timers.splice(0).forEach((timer) => timer());
  }

  named(...names) {
    return this.events.filter(([name]) => names.includes(name));
  }

  get logs() {
    return this.named('log').map(([, text]) => text);
  }

  // What was sent, native or runtime, in order.
  get sent() {
    return this.named('callSync', 'call', 'runtimeSync', 'runtimeAsync', 'runtime');
  }

  get rules() {
    return this.named('validate').at(-1)[1];
  }

  record(...event) {
    this.events.push(event);
  }

  globals() {
    return {
      WebAPIException: FakeWebAPIException,
      console: { log: (text, ...more) => this.record('log', text, ...more) },
      setTimeout: (callback, delay) => {
        this.record('setTimeout', delay);
        this.timers.push(callback);
      },
      widget: {
        move: (...position) => this.answer('widget.move', ...position),
        setQuarterPosition: (...position) => this.answer('widget.setQuarterPosition', ...position),
      },
      xwalk: { utils: this.utils() },
    };
  }

  utils() {
    const runtime = this;
    return {
      NativeManager: class {
        constructor(...args) {
          return runtime.nativeManager(...args);
        }
      },
      validator: {
        Types: Object.fromEntries(typeNames.map((name) => [name, name])),
        validateArgsStrict: (args, rules, ...more) => this.validate(args, rules, more),
      },
      converter: {
        toDouble: (value, nullable) => {
          this.record('toDouble', value, nullable);
          return Number(value);
        },
      },
      type: { getValues: (enumeration) => Object.values(enumeration) },
      privilege: { TV_INPUT_DEVICE: 'the input device privilege' },
      checkPrivilegeAccess: (privilege) => {
        this.record('privilege', privilege);
        if (this.privilegeError) {
          throw this.privilegeError;
        }
      },
    };
  }

  // Returns null on purpose: a script that reads the validator's result cannot get far.
  validate(args, rules, more) {
    this.record('validate', plain(rules), plain([...args]), ...more);
    if (this.argumentError) {
      throw this.argumentError;
    }
    return null;
  }

  nativeManager(...constructorArguments) {
    const send = (what, args) => this.record(what, ...args.map(plain));
    this.nativeManagerArguments = constructorArguments;
    return {
      callSync: (...args) => {
        send('callSync', args);
        return this.replies[args[0]] ?? { status: 'success' };
      },
      call: (name, args, callback) => {
        send('call', [name, args]);
        this.pending.push(callback);
      },
      isFailure: (reply) => reply.status === 'error',
      getErrorObject: (reply) => reply.error,
      getResultObject: (reply) => reply.result,
      callIfPossible: (callback, ...args) => {
        if (typeof callback === 'function') {
          callback(...args);
        }
      },
      sendRuntimeMessage: (...args) => this.answer('runtime', ...args),
      sendRuntimeSyncMessage: (...args) => this.answer('runtimeSync', ...args),
      sendRuntimeAsyncMessage: (uri, text, callback) => {
        send('runtimeAsync', [uri, text]);
        this.pending.push(callback);
      },
    };
  }

  answer(what, ...args) {
    this.record(what, ...args);
    return this.answers.length > 1 ? this.answers.shift() : this.answers[0];
  }
}

// A reply that carries a result, and one that carries an error.
export const success = (result) => ({ status: 'success', result });
export const failure = (message = 'refused') => ({
  status: 'error',
  error: { code: 9, name: 'NotSupportedError', message },
});
