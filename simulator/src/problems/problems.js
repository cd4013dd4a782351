// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Everything that is wrong and that somebody can do something about, in one list.

import { computed } from '../view.js';
import { info, pages, process } from '../state/run.js';
import { explanations } from '../state/streams.js';
import { clockTime } from '../ui/format.js';

/** @typedef {{kind: string, tone: 'warn' | 'bad', title: string, where?: string}} Problem */

function configProblems() {
  return (info.value?.app?.warnings ?? []).map(({ file, line, element, text }) => ({
    kind: 'config.xml',
    tone: 'warn',
    title: element ? `<${element}>: ${text}` : text,
    where: `${file ?? 'config.xml'}${line ? `:${line}` : ''}`,
  }));
}

function pageProblems() {
  return pages.value
    .filter((page) => page.runtime === 'noScript' || page.problem)
    .map((page) => ({
      kind: 'page',
      tone: 'bad',
      title:
        page.problem ??
        'No script of the runtime ran in this page; its content policy forbids it. ' +
          "Allow 'self' in its script-src.",
      where: page.href,
    }));
}

function deathProblems() {
  return (process.value?.deaths ?? []).map((death) => ({
    kind: 'process',
    tone: 'bad',
    title: deathText(death),
    where: clockTime(death.time_ns),
  }));
}

function explained() {
  return explanations.value.map(({ text, context, time_ns: time }) => ({
    kind: 'explanation',
    tone: 'warn',
    title: text,
    where: [time && clockTime(time), context && `page ${context}`].filter(Boolean).join(' · '),
  }));
}

/** " while it handled getAppState of dravelt.orvane", as far as it is known. */
function handledName(handling) {
  if (!handling?.name) {
    return '';
  }
  const method = /"cmd"\s*:\s*"(?:OrvaneManager_)?([^"]+)"/.exec(handling.text ?? '')?.[1];
  return ` while it handled ${method ? `${method} of ` : ''}${handling.name}`;
}

function howItEnded({ signal, exit, reason }) {
  if (reason) {
    return reason;
  }
  return signal ? `signal ${signal}` : `exit code ${exit ?? 'unknown'}`;
}

/** What ended the library's process, in one sentence. */
export function deathText(death) {
  return `The library's process ended${handledName(death.handling)}: ${howItEnded(death)}.`;
}

export const problems = computed(() => [
  ...pageProblems(),
  ...configProblems(),
  ...deathProblems(),
  ...explained().reverse(),
]);
