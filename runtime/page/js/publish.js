// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Puts extensions under their dotted names. Nothing of an extension is loaded before a script
// touches its name or one of its entry points. What is published is read-only for the page, and so
// are the objects made to hold it.
(function makePublish(use, bridge, builtins) {
  'use strict';

  const { defineProperty } = builtins;

  // What a script sees at a name: { get, set }. `owner` is the state of the extension.
  function atName(owner) {
    return {
      get() {
        if (owner.state !== 'loaded') {
          load(owner);
        }
        return owner.exported;
      },
      set: undefined,
    };
  }

  // An entry point holds what the extension's script assigns to it while it is evaluated.
  function atEntryPoint(owner, name) {
    let value;
    return {
      get() {
        load(owner);
        return value;
      },
      set(newValue) {
        if (owner.state !== 'loading') {
          throw new TypeError(`${name} is read-only.`);
        }
        value = newValue;
      },
    };
  }

  function load(owner) {
    if (owner.state === 'failed') {
      throw owner.error;
    }
    if (owner.state !== 'waiting') {
      return;
    }
    owner.state = 'loading';
    try {
      const native = bridge.createInstance(owner.name);
      if (native !== null) {
        owner.exported = native.evaluateScript()(use('xwalk'))(use('extension')(native));
      }
      owner.state = 'loaded';
    } catch (error) {
      owner.state = 'failed';
      owner.error = error;
      throw error;
    }
  }

  function makeSlots(extensions) {
    const slots = [];
    for (let index = 0; index < extensions.length; index += 1) {
      const { name, entryPoints } = extensions[index];
      const owner = { name, state: 'waiting', exported: undefined, error: undefined };
      slots.push({ name, access: atName(owner) });
      for (let entry = 0; entry < entryPoints.length; entry += 1) {
        slots.push({ name: entryPoints[entry], access: atEntryPoint(owner, entryPoints[entry]) });
      }
    }
    return slots;
  }

  const isHolder = (value) =>
    value !== null && (typeof value === 'object' || typeof value === 'function');

  // Gives `holder`, which stands at the dotted `prefix`, a property for each next part of the names
  // that begin with it. A part that is no extension's name becomes an object on first touch; one
  // that the page has already is kept and filled.
  function fill(holder, prefix, slots) {
    const done = {};
    for (let index = 0; index < slots.length; index += 1) {
      const { name } = slots[index];
      if (name.startsWith(prefix) && name.length > prefix.length) {
        const dot = name.indexOf('.', prefix.length);
        const path = dot < 0 ? name : name.slice(0, dot);
        if (done[path] === undefined) {
          done[path] = true;
          fillPart(holder, path.slice(prefix.length), path, slots);
        }
      }
    }
    return holder;
  }

  function fillPart(holder, key, path, slots) {
    const exact = slots.find((slot) => slot.name === path);
    if (exact === undefined && isHolder(holder[key])) {
      fill(holder[key], `${path}.`, slots);
      return;
    }
    const access = exact === undefined ? atNamespace(path, slots) : withInner(exact, path, slots);
    defineProperty(holder, key, {
      __proto__: null,
      get: access.get,
      set: access.set,
      enumerable: true,
    });
  }

  function atNamespace(path, slots) {
    let namespace;
    return {
      get() {
        if (namespace === undefined) {
          namespace = Object.preventExtensions(fill({}, `${path}.`, slots));
        }
        return namespace;
      },
      set: undefined,
    };
  }

  // A name below another extension's name lives on what that one exports.
  function withInner(slot, path, slots) {
    if (!slots.some((other) => other.name.startsWith(`${path}.`))) {
      return slot.access;
    }
    let filled = false;
    return {
      get() {
        const holder = slot.access.get();
        if (!filled && isHolder(holder)) {
          filled = true;
          fill(holder, `${path}.`, slots);
        }
        return holder;
      },
      set: slot.access.set,
    };
  }

  return (root, extensions) => fill(root, '', makeSlots(extensions));
});
