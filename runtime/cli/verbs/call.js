// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Calls the one method that was named on the command line, and tells the command what came of it.
(function (command) {
  // Methods that answer later, and how many arguments come before their callbacks.
  const argumentsBeforeCallbacks = new Map([
    ['getSystemStat', 1],
    ['recordProfiling', 1],
    ['resetProfiling', 0],
    ['setAuxHint', 1],
    ['setScreenSaver', 1],
  ]);

  function methodNames(object) {
    const names = [];
    for (const name in object) {
      if (typeof object[name] === 'function') {
        names.push(name);
      }
    }
    return names.sort();
  }

  function succeed(value) {
    const text = JSON.stringify(value);
    command.succeed(text === undefined ? 'null' : text);
  }

  function fail(error) {
    if (error === null || typeof error !== 'object') {
      command.fail(JSON.stringify({ name: 'Error', message: String(error) }));
      return;
    }
    // Read one by one: an error's own members are not all enumerable.
    const { code, name, message } = error;
    command.fail(JSON.stringify({ code, name, message }));
  }

  // The values of the arguments; undefined when one is no JSON.
  function parseAll(texts) {
    const values = [];
    for (let i = 0; i < texts.length; ++i) {
      try {
        values.push(JSON.parse(texts[i]));
      } catch (error) {
        command.refuseArgument(i, error.message);
        return undefined;
      }
    }
    return values;
  }

  function withCallbacks(method, values) {
    const count = argumentsBeforeCallbacks.get(method);
    if (count === undefined) {
      return values;
    }
    const padded = values.slice(0, count);
    while (padded.length < count) {
      padded.push(undefined);
    }
    return padded.concat([succeed, fail]);
  }

  const request = command.request();
  const target = dravelt.orvane;
  const names = methodNames(target);
  if (!names.includes(request.method)) {
    command.refuseMethod(names);
    return;
  }
  const values = parseAll(request.arguments);
  if (values === undefined) {
    return;
  }
  try {
    const result = target[request.method](...withCallbacks(request.method, values));
    if (!argumentsBeforeCallbacks.has(request.method)) {
      succeed(result);
    }
  } catch (error) {
    fail(error);
  }
})(orvaneCommand);
