// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Puts extensions under their dotted names. Nothing of an extension is loaded before a script
// touches its name or one of its entry points. What is published is read-only for the page, and so
// are the objects made to hold it.
(function makePublish() {
  'use strict';

  const unset = Symbol('not loaded');

  // `load(name)` evaluates the extension's script and returns what it exports.
  function makeSlots(extension, load) {
    let exported = unset;
    let failure = null;
    let loading = false;
    const ensure = () => {
      if (exported !== unset || loading) {
        return;
      }
      if (failure !== null) {
        throw failure.error;
      }
      loading = true;
      try {
        exported = load(extension.name);
      } catch (error) {
        failure = { error };
        throw error;
      } finally {
        loading = false;
      }
    };
    const readOnly = (name) => {
      throw new TypeError(`${name} is read-only.`);
    };

    const slots = [
      {
        name: extension.name,
        get() {
          if (exported === unset) {
            ensure();
          }
          return exported === unset ? undefined : exported;
        },
        set() {
          readOnly(extension.name);
        },
      },
    ];
    // An entry point holds what the extension's script assigns to it while it is evaluated.
    for (const name of extension.entryPoints) {
      let value;
      slots.push({
        name,
        get() {
          ensure();
          return value;
        },
        set(newValue) {
          if (!loading) {
            readOnly(name);
          }
          value = newValue;
        },
      });
    }
    return slots;
  }

  function defineSlot(holder, key, slot) {
    Object.defineProperty(holder, key, {
      get: slot.get,
      set: slot.set,
      enumerable: true,
      configurable: false,
    });
  }

  // A name below another extension's name lives on what that one exports.
  function deferUnder(slot, children) {
    const { get } = slot;
    let placed = false;
    return {
      get() {
        const holder = get();
        if (!placed && holder !== null && typeof holder === 'object') {
          placed = true;
          placeAll(holder, children);
        }
        return holder;
      },
      set: slot.set,
    };
  }

  // `nodes` maps a name's next part to { slot, children }.
  function placeAll(holder, nodes) {
    for (const [key, { slot, children }] of nodes) {
      if (slot !== null) {
        defineSlot(holder, key, children.size > 0 ? deferUnder(slot, children) : slot);
      } else if (holder[key] !== null && typeof holder[key] === 'object') {
        placeAll(holder[key], children);
      } else {
        const namespace = {};
        placeAll(namespace, children);
        Object.defineProperty(holder, key, { value: Object.freeze(namespace), enumerable: true });
      }
    }
  }

  return function publish(root, extensions, load) {
    const tree = new Map();
    for (const extension of extensions) {
      for (const slot of makeSlots(extension, load)) {
        let level = tree;
        let node = null;
        for (const part of slot.name.split('.')) {
          if (!level.has(part)) {
            level.set(part, { slot: null, children: new Map() });
          }
          node = level.get(part);
          level = node.children;
        }
        node.slot = slot;
      }
    }
    placeAll(root, tree);
  };
});
