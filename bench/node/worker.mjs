// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// node worker.mjs ADDON: the cases of the peer, sameCall and differentCalls, for a run that asks as
// it asks orvane-bench (worker.cc).
import { createRequire } from 'node:module';
import process, { argv, hrtime, stdin, stdout } from 'node:process';
import { createInterface } from 'node:readline';

const { call } = createRequire(import.meta.url)(argv[2]);
const ids = Array.from({ length: 8 }, (_, index) => `OrvaneBnch.App${index}`);

function getAppState(appid) {
  const message = JSON.stringify({ cmd: 'OrvaneManager_getAppState', args: { appid } });
  const reply = JSON.parse(call(message));
  if (reply.status !== 'success') {
    throw new Error(`${appid} was not found`);
  }
  return reply.result;
}

const cases = {
  sameCall(count) {
    for (let i = 0; i < count; ++i) {
      getAppState('');
    }
  },
  differentCalls(count) {
    for (let i = 0; i < count; ++i) {
      getAppState(ids[i % 8]);
    }
  },
};

function measure(name, count) {
  const { involuntaryContextSwitches: switches } = process.resourceUsage();
  const start = hrtime.bigint();
  const before = process.cpuUsage();
  cases[name](count);
  const { user, system } = process.cpuUsage(before);
  const passed = hrtime.bigint() - start;
  const more = process.resourceUsage().involuntaryContextSwitches - switches;
  return `${(user + system) * 1000} ${passed} ${more}`;
}

stdout.write('ready\n');
for await (const line of createInterface({ input: stdin })) {
  const [name, count] = line.split(' ');
  stdout.write(`${measure(name, Number(count))}\n`);
}
