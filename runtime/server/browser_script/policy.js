// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Explains what the page's own content policy forbids of the runtime, and what the runtime forbids
// the page, instead of letting things fail for no visible reason.

import { listen } from './document_listeners.js';

const parts = {
  'worker-src': 'the worker that makes synchronous calls quick',
  'child-src': 'the worker that makes synchronous calls quick',
  'connect-src': 'the connection to the runtime',
  'script-src': "the runtime's script",
};

const remedies = {
  'worker-src': "add 'self' to worker-src (calls use slower blocking requests until then)",
  'connect-src': "add 'self' to connect-src (no call can reach the library until then)",
  'script-src': "add 'self' to script-src",
};

function isOurs(address) {
  return address.includes('/.orvane/');
}

// The text for a developer; null when the violation does not concern the runtime.
export function explainViolation({ blockedURI, effectiveDirective, disposition }) {
  if (disposition !== 'enforce' || !isOurs(blockedURI)) {
    return null;
  }
  const [directive] = effectiveDirective.split('-elem');
  const part = parts[directive] ?? 'a part of the runtime';
  const name = directive === 'child-src' ? 'worker-src' : directive;
  const remedy = remedies[name] ?? `add 'self' to ${name}`;
  return `The page's content policy (${directive}) blocks ${part}: ${remedy}.`;
}

// What the isolation of the page keeps out; null when a report is of something else.
export function explainIsolation({ type, body }) {
  // Of this type, only its JSON has the members.
  const { disposition, destination, blockedURL } = body?.toJSON?.() ?? {};
  if (type !== 'coep' || disposition !== 'enforce') {
    return null;
  }
  const isFrame = destination === 'iframe';
  return (
    `The page may not ${isFrame ? 'show' : 'load'} ${blockedURL}: it is isolated from other ` +
    'sites, which makes synchronous calls quick. Start "orvane run" with --no-isolation' +
    `${isFrame ? ', or give the frame the attribute "credentialless"' : ''}.`
  );
}

export function watchPolicy(report) {
  const explain = (text) => {
    if (text !== null) {
      console.error(`[orvane] ${text}`);
      report({ type: 'explain', text });
    }
  };
  listen(document, 'securitypolicyviolation', (event) => explain(explainViolation(event)));
  if (globalThis.crossOriginIsolated && globalThis.ReportingObserver) {
    new ReportingObserver((reports) => {
      new Set(reports.map(explainIsolation)).forEach(explain);
    }).observe();
  }
}
