// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The script that a served page runs before its own first one: it makes the page's runtime. The
// build makes this and what it imports one function expression, whose arguments the server supplies
// (see README.md): `boot`, and the extensions' scripts as functions. Nothing of it becomes a global
// of the page.

import { startPage } from '../../page/js/main.js';
import { Caller } from './caller.js';
import { makeBridge } from './bridge.js';
import { Transport } from './transport.js';
import { watchConsole } from './console_reports.js';
import { watchPageState } from './page_state.js';
import { watchPolicy } from './policy.js';
import { watchKeyboard } from './keyboard.js';
import { pressKey } from './remote_keys.js';
import { enterText } from './typing.js';
import { watchSrcdocFrames } from './srcdoc_frames.js';
import { endWithPage, reloadPage, reloadWhenBack } from './lifetime.js';

const unconnected =
  'The page has no connection to the runtime: keys, typed text and posted messages do not reach ' +
  "it. Does its content policy lack connect-src 'self'?";

const enterKey = { key_name: 'Return', key_code: 13, phase: 'press' };

// What the server sends of its own accord, and late answers.
function makeReceiver(caller, extensions) {
  return {
    answer: (message) => caller.answer(message),
    posted: ({ extension, body }) => extensions.get(extension)?.deliver(body),
    key: pressKey,
    ime: (message) => enterText(message, () => pressKey(enterKey)),
    reload: reloadPage,
    gone: reloadPage,
    restarted() {
      const why = 'the process of the library ended before it answered, and was started again';
      caller.failWaiting(why);
      extensions.forEach((extension) => extension.failWaiting(`${extension.name}: ${why}`));
    },
  };
}

function start() {
  const extensions = new Map();
  const caller = new Caller();
  const receiver = makeReceiver(caller, extensions);
  caller.transport = new Transport(boot, {
    receive: (message) => receiver[message.type]?.(message),
    lost: reloadWhenBack,
    failed: () => console.warn(`[orvane] ${unconnected}`),
  });
  startPage(makeBridge(boot, scripts, caller, extensions));

  const report = (message) => caller.report(message);
  watchPolicy(report);
  if (caller.transport.problem !== null) {
    report({ type: 'explain', text: caller.transport.problem });
  }
  watchConsole(report);
  watchPageState(report);
  watchKeyboard(report);
  endWithPage(caller.transport);
  watchSrcdocFrames(`${globalThis.origin}/.orvane/page.js`);
}

start();
