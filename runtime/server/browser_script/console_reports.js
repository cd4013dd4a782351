// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Forwards what the page writes to its console, and the errors that it does not catch, to the
// simulator. The browser's own console goes on as before; the build marks this script so that the
// developer tools show the page's line, not this one.

import { callFunction } from './builtins.js';
import { describeValue } from './describe_value.js';
import { listen } from './document_listeners.js';

const longestText = 8 * 1024;
// A page that writes in an endless loop keeps the newest lines out, not the browser busy.
const mostPerSecond = 2000;

function makeLimiter() {
  let second = 0;
  let count = 0;
  return () => {
    const current = Math.floor(Date.now() / 1000);
    if (current !== second) {
      second = current;
      count = 0;
    }
    count += 1;
    return count <= mostPerSecond;
  };
}

export function watchConsole(report) {
  const mayTell = makeLimiter();
  let telling = false;

  function tell(level, text, where) {
    if (telling || !mayTell()) {
      return;
    }
    telling = true;
    try {
      report({
        type: 'console',
        level,
        text: text.slice(0, longestText),
        where: where?.slice(-longestText),
      });
    } finally {
      telling = false;
    }
  }

  for (const level of ['debug', 'log', 'info', 'warn', 'error']) {
    const own = console[level];
    const wrapped = {
      [level](...args) {
        tell(level, args.map((value) => describeValue(value)).join(' '));
        return callFunction(own, this, args);
      },
    };
    console[level] = wrapped[level];
  }
  listen(window, 'error', (event) => {
    if (event.message) {
      const { filename, lineno, colno } = event;
      tell(
        'error',
        `Uncaught ${describeValue(event.error ?? event.message)}`,
        `${filename}:${lineno}:${colno}`
      );
    }
  });
  listen(window, 'unhandledrejection', (event) => {
    tell('error', `Uncaught (in promise) ${describeValue(event.reason)}`);
  });
}
