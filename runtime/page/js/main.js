// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// The runtime's script side. The build puts the other files of this folder where the mark stands,
// so that a page evaluates one script; each file is one function that makes its part when something
// first uses it.
//
// `bridge` is what the home of the page supplies, in process or in a browser:
//   extensions()          what a page may touch: [{ name, entryPoints }]
//   createInstance(name)  makes the instance for this page; returns its native side, see
//                         extension.js, or null
//   hasPrivilege(uri), moveWindow(x, y), setQuarterPosition(position), widgetInfo()
//   addTimer, removeTimer, writeConsole, reportError: only in process, where no browser has them
(function startPage(bridge) {
  'use strict';

  const factories = {
    // @parts
  };
  const parts = Object.create(null);

  function use(name) {
    if (!(name in parts)) {
      parts[name] = factories[name](use, bridge);
    }
    return parts[name];
  }

  function defineData(name, value) {
    Object.defineProperty(globalThis, name, {
      value,
      writable: true,
      enumerable: false,
      configurable: true,
    });
  }

  // Most pages never touch most of these: each is made on first touch, and is a plain property from
  // then on.
  function defineLazily(name, make) {
    Object.defineProperty(globalThis, name, {
      get() {
        const value = make();
        defineData(name, value);
        return value;
      },
      set(value) {
        defineData(name, value);
      },
      enumerable: false,
      configurable: true,
    });
  }

  // Returns what the extension's script exports.
  function load(name) {
    const native = bridge.createInstance(name);
    return native === null ? undefined : native.evaluateScript()(use('extension')(native));
  }

  defineLazily('xwalk', () => use('xwalk'));
  defineLazily('WebAPIException', () => use('exceptions').WebAPIException);
  defineLazily('WebAPIError', () => use('exceptions').WebAPIError);
  defineLazily('widget', () => use('widget'));
  if (bridge.addTimer) {
    defineData('window', globalThis);
    defineData('self', globalThis);
    defineLazily('console', () => use('console'));
    use('timers');
  }
  const extensions = bridge.extensions();
  if (extensions.length > 0) {
    use('publish')(globalThis, extensions, load);
  }
  return (promise, reason) => bridge.reportError(reason, 'Unhandled promise rejection: ');
});
