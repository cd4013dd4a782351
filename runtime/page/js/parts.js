// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

import { makeConsole } from './console.js';
import { makeConverter } from './converter.js';
import { makeDescribe } from './describe.js';
import { makeExceptions } from './exceptions.js';
import { makeExtensionFactory } from './extension.js';
import { makeInspect } from './inspect.js';
import { makeNativeManager } from './native_manager.js';
import { makePrivilege } from './privilege.js';
import { makeType } from './type.js';
import { makeValidator } from './validator.js';
import { makeWidget } from './widget.js';
import { makeXwalk } from './xwalk.js';

function makePart(name, use, host) {
  switch (name) {
    case 'console':
      return makeConsole(use, host);
    case 'converter':
      return makeConverter(use);
    case 'describe':
      return makeDescribe();
    case 'exceptions':
      return makeExceptions();
    case 'extension':
      return makeExtensionFactory();
    case 'inspect':
      return makeInspect();
    case 'native_manager':
      return makeNativeManager(use);
    case 'privilege':
      return makePrivilege(use, host);
    case 'type':
      return makeType();
    case 'validator':
      return makeValidator(use);
    case 'widget':
      return makeWidget(use, host);
    case 'xwalk':
      return makeXwalk(use);
    default:
      throw new TypeError(`The runtime has no part "${name}".`);
  }
}

// Returns use(name), which makes a part when it is first asked for and returns the same one from
// then on. `parts` are those that exist already; it has no prototype, because what a page puts on
// Object.prototype is no part.
export function makeUse(host, parts) {
  return function use(name) {
    if (parts[name] === undefined) {
      parts[name] = makePart(name, use, host);
    }
    return parts[name];
  };
}
