// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Explains what the page's own content policy forbids of the runtime, instead of letting calls fail
// for no visible reason.

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

export function watchPolicy(report) {
  listen(document, 'securitypolicyviolation', (event) => {
    const text = explainViolation(event);
    if (text !== null) {
      console.error(`[orvane] ${text}`);
      report({ type: 'explain', text });
    }
  });
}
