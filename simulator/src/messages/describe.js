// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What a recorded message is about, in a few words.

const kinds = {
  nativeSync: 'native',
  nativePost: 'native, later',
  nativeBinary: 'native, bytes',
  runtimePlain: 'runtime',
  runtimeSync: 'runtime',
  runtimeAsync: 'runtime, later',
  widget: 'window',
  privilege: 'privilege',
  create: 'instance',
  close: 'instance',
};

export function kindText(kind) {
  return kinds[kind] ?? kind;
}

function parsed(text) {
  try {
    const value = JSON.parse(text);
    return typeof value === 'object' ? value : null;
  } catch {
    return null;
  }
}

/** The method of a native message, else whom it is for. */
export function nameOf({ kind, peer, payload }) {
  const message = kind.startsWith('native') ? parsed(payload) : null;
  const name = message?.cmd?.replace(/^OrvaneManager_/, '');
  if (name) {
    return name;
  }
  if (message && 'callbackId' in message) {
    return `answer ${message.callbackId}`;
  }
  return kind.startsWith('runtime') ? peer.replace(/^[a-z]+:\/\//, '') : `${kind} ${peer}`;
}

/** Whether it came to nothing: an error of the transport, of the library, or a refusal. */
export function failed({ kind, reply, payload, error, direction }) {
  if (error) {
    return true;
  }
  const text = direction === 'toPage' ? payload : reply;
  if (kind.startsWith('runtime') || kind === 'widget') {
    return text === 'error' || text === 'notsupportederror' || parsed(text)?.status === 'error';
  }
  return parsed(text)?.status === 'error';
}

/** What was sent, without what every message has. */
export function summary({ payload, kind, direction }) {
  const message = kind.startsWith('native') ? parsed(payload) : null;
  if (!message) {
    return payload ?? '';
  }
  if (direction === 'fromPage' && message.args !== undefined) {
    const text = JSON.stringify(message.args);
    return text === '{}' ? '' : text;
  }
  return payload;
}

/** Whether a page waits while it is handled. */
export function waitsForIt({ kind }) {
  return kind === 'nativeSync' || kind === 'runtimeSync' || kind === 'runtimePlain';
}

export function isSlow(record, budgetMs) {
  return waitsForIt(record) && record.us !== undefined && record.us > budgetMs * 1000;
}
