// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Values as text for a person: what console.log prints.
export function makeInspect() {
  const deepest = 3;
  const mostItems = 100;
  const widest = 72;

  function inspect(value) {
    return format(value, 0, []);
  }

  // A text that stands for itself is printed as it is; inside an object it has quotes.
  inspect.argument = (value) => (typeof value === 'string' ? value : inspect(value));

  function format(value, depth, ancestors) {
    switch (typeof value) {
      case 'string':
        return JSON.stringify(value);
      case 'bigint':
        return `${value}n`;
      case 'number':
        return Object.is(value, -0) ? '-0' : String(value);
      case 'function':
        return formatFunction(value);
      case 'object':
        return value === null ? 'null' : formatObject(value, depth, ancestors);
      default:
        return String(value);
    }
  }

  function formatFunction(value) {
    const kind = /^class\b/.test(Function.prototype.toString.call(value)) ? 'class' : 'Function';
    return `[${kind} ${value.name || '(anonymous)'}]`;
  }

  function formatObject(value, depth, ancestors) {
    if (ancestors.includes(value)) {
      return '[Circular]';
    }
    if (value instanceof Error) {
      return formatError(value);
    }
    if (value instanceof Date) {
      return Number.isNaN(value.getTime()) ? 'Invalid Date' : value.toISOString();
    }
    if (value instanceof RegExp || value instanceof Number || value instanceof Boolean) {
      return String(value);
    }
    const name = nameOf(value);
    if (depth >= deepest) {
      return Array.isArray(value) ? '[Array]' : `[${name || 'Object'}]`;
    }
    return formatMembers(value, name, depth + 1, [...ancestors, value]);
  }

  function formatError(error) {
    const head = String(error);
    const stack = typeof error.stack === 'string' ? error.stack.trimEnd() : '';
    if (stack === '') {
      return head;
    }
    const frames = stack.startsWith(head) ? stack.slice(head.length + 1) : stack;
    return [
      head,
      ...frames.split('\n').map((line) => `    at ${line.trim().replace(/^at /, '')}`),
    ].join('\n');
  }

  // The constructor's name, except for plain objects and arrays.
  function nameOf(value) {
    const prototype = Object.getPrototypeOf(value);
    if (prototype === null) {
      return '[null prototype]';
    }
    const { constructor } = prototype;
    const name = typeof constructor === 'function' ? constructor.name : '';
    return name === 'Object' || name === 'Array' ? '' : name;
  }

  function formatMembers(value, name, depth, ancestors) {
    const inner = (item) => format(item, depth, ancestors);
    const isList =
      Array.isArray(value) || (ArrayBuffer.isView(value) && !(value instanceof DataView));
    let items;
    let label = name;
    if (isList) {
      items = Array.from(limited(value), inner);
    } else if (value instanceof Map) {
      label = `${name}(${value.size})`;
      items = Array.from(limited(value), ([key, item]) => `${inner(key)} => ${inner(item)}`);
    } else if (value instanceof Set) {
      label = `${name}(${value.size})`;
      items = Array.from(limited(value), inner);
    } else if (value instanceof ArrayBuffer) {
      items = [`byteLength: ${value.byteLength}`];
    } else {
      items = ownMembers(value, inner);
    }
    const count = isList ? value.length : value.size;
    if (count > mostItems) {
      items.push(`\u2026 ${count - mostItems} more`);
    }
    return wrap(label, items, isList ? '[]' : '{}');
  }

  function* limited(list) {
    let count = 0;
    for (const item of list) {
      if (count === mostItems) {
        return;
      }
      count += 1;
      yield item;
    }
  }

  function ownMembers(value, inner) {
    const keys = Object.keys(value);
    const items = keys.slice(0, mostItems).map((key) => {
      const { get, value: item } = Object.getOwnPropertyDescriptor(value, key);
      const label = /^[A-Za-z_$][\w$]*$/.test(key) ? key : JSON.stringify(key);
      return `${label}: ${get ? '[Getter]' : inner(item)}`;
    });
    if (keys.length > mostItems) {
      items.push(`\u2026 ${keys.length - mostItems} more`);
    }
    return items;
  }

  function wrap(name, items, [open, close]) {
    const head = name === '' ? open : `${name} ${open}`;
    if (items.length === 0) {
      return head + close;
    }
    const pad = open === '{' ? ' ' : '';
    const line = `${head}${pad}${items.join(', ')}${pad}${close}`;
    if (line.length <= widest && !line.includes('\n')) {
      return line;
    }
    const lines = items.map((item) => `  ${item.replaceAll('\n', '\n  ')}`);
    return `${head}\n${lines.join(',\n')}\n${close}`;
  }

  return inspect;
}
