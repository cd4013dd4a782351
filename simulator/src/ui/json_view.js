// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A payload as a person reads it: JSON indented and coloured, other text as it is.

import { html, useMemo } from '../view.js';

const longest = 200000; // characters that are coloured; more is shown plain
const tokens =
  /("(?:[^"\\]|\\.)*")(\s*:)?|\b(true|false|null)\b|(-?\d+(?:\.\d+)?(?:[eE][+-]?\d+)?)/g;

/** @returns {string | null} null when the text is no JSON object, array or value */
export function indented(text) {
  try {
    return JSON.stringify(JSON.parse(text), null, 2);
  } catch {
    return null;
  }
}

function coloured(text) {
  const parts = [];
  let at = 0;
  for (const match of text.matchAll(tokens)) {
    parts.push(text.slice(at, match.index));
    const [whole, string, colon, word] = match;
    const kind = string ? (colon ? 'name' : 'string') : word ? 'word' : 'number';
    parts.push(html`<span class=${`json-${kind}`}>${string ?? whole}</span>${colon ?? ''}`);
    at = match.index + whole.length;
  }
  parts.push(text.slice(at));
  return parts;
}

export function JsonView({ text, label }) {
  const shown = useMemo(() => {
    const pretty = indented(text ?? '');
    return pretty !== null && pretty.length < longest ? coloured(pretty) : (text ?? '');
  }, [text]);
  return html`<pre class="json" tabindex="0" role="region" aria-label=${label}>${shown}</pre>`;
}
