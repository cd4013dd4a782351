// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A value of the page as one text for the simulator. Reading it must not run the page's code more
// than needed, and must never throw.

const mostItems = 20;
const deepest = 2;

export function describeValue(value, depth = 0) {
  try {
    return describe(value, depth);
  } catch (error) {
    return '[an object that cannot be shown]';
  }
}

function describe(value, depth) {
  switch (typeof value) {
    case 'string':
      return depth === 0 ? value : quote(value);
    case 'bigint':
      return `${value}n`;
    case 'function':
      return `function ${value.name || '(anonymous)'}`;
    case 'object':
      return value === null ? 'null' : describeObject(value, depth);
    default:
      return String(value);
  }
}

function describeObject(value, depth) {
  if (value instanceof Error) {
    return typeof value.stack === 'string' && value.stack.includes(value.message)
      ? value.stack
      : `${value.name}: ${value.message}`;
  }
  if (typeof value.nodeType === 'number' && typeof value.nodeName === 'string') {
    return `<${value.nodeName.toLowerCase()}${value.id ? ` id=${quote(value.id)}` : ''}>`;
  }
  if (depth >= deepest) {
    return Array.isArray(value) ? '[…]' : '{…}';
  }
  return Array.isArray(value) ? describeArray(value, depth) : describeMembers(value, depth);
}

function describeArray(value, depth) {
  const items = value.slice(0, mostItems).map((item) => describeValue(item, depth + 1));
  return `[${items.join(', ')}${value.length > mostItems ? ', …' : ''}]`;
}

function describeMembers(value, depth) {
  const names = Object.keys(value);
  const shown = names.slice(0, mostItems).map((name) => {
    // A getter is the page's code.
    const { get, value: member } = Object.getOwnPropertyDescriptor(value, name);
    return `${name}: ${get ? '(getter)' : describeValue(member, depth + 1)}`;
  });
  const made = value.constructor?.name;
  const kind = made && made !== 'Object' ? `${made} ` : '';
  return `${kind}{${shown.join(', ')}${names.length > mostItems ? ', …' : ''}}`;
}

const quote = (text) => `"${text.replaceAll('\\', '\\\\').replaceAll('"', '\\"')}"`;
