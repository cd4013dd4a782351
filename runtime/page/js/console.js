// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// The console of a page that has no browser around it: one line of text per call goes to the home
// of the page.
export function makeConsole(use, host) {
  const inspect = use('inspect');
  const levels = { debug: 0, log: 1, info: 2, warn: 3, error: 4 };

  // %s %d %i %f %o %O %j take the next argument, %c drops it, %% is a percent sign.
  function fill(format, args) {
    let next = 0;
    const text = format.replace(/%[sdifoOjc%]/g, (mark) => {
      if (mark === '%%') {
        return '%';
      }
      if (next >= args.length) {
        return mark;
      }
      const value = args[next];
      next += 1;
      return fillOne(mark, value);
    });
    return [text, ...args.slice(next).map((value) => inspect.argument(value))].join(' ');
  }

  function fillOne(mark, value) {
    switch (mark) {
      case '%s':
        return inspect.argument(value);
      case '%d':
        return String(typeof value === 'symbol' || typeof value === 'object' ? NaN : Number(value));
      case '%i':
        return String(typeof value === 'symbol' ? NaN : parseInt(value, 10));
      case '%f':
        return String(typeof value === 'symbol' ? NaN : parseFloat(value));
      case '%c':
        return '';
      case '%j':
        return JSON.stringify(value);
      default:
        return inspect(value);
    }
  }

  let indent = '';

  function write(level, args) {
    const text =
      typeof args[0] === 'string' && args.length > 1
        ? fill(args[0], args.slice(1))
        : args.map((value) => inspect.argument(value)).join(' ');
    host.writeConsole(level, indent === '' ? text : indent + text.replaceAll('\n', `\n${indent}`));
  }

  const page = {
    assert(condition, ...args) {
      if (!condition) {
        write(levels.error, [
          'Assertion failed' + (args.length > 0 ? ':' : ''),
          ...args.map(inspect.argument),
        ]);
      }
    },
    dir(value) {
      write(levels.log, [inspect(value)]);
    },
    trace(...args) {
      write(levels.log, ['Trace:', ...args.map(inspect.argument), `\n${new Error().stack}`]);
    },
    group(...args) {
      write(levels.log, args);
      indent += '  ';
    },
    groupEnd() {
      indent = indent.slice(2);
    },
  };
  for (const name of Object.keys(levels)) {
    page[name] = (...args) => write(levels[name], args);
  }
  return page;
}
