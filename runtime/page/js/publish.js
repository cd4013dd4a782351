// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

import { defineProperty } from './builtins.js';

// Puts extensions under their dotted names. Nothing of an extension is loaded before a script
// touches its name or one of its entry points. What is published is read-only for the page, and so
// are the objects made to hold it; objects that the page has already are kept and added to.
export function makePublish(use, host) {
  // Dotted name -> what is published there.
  const spots = { __proto__: null };
  const namespaces = [];

  const isHolder = (value) =>
    value !== null && (typeof value === 'object' || typeof value === 'function');

  // `extension` is shared by the spots of one extension: its name and those of its entry points.
  // The name holds what the script exports, an entry point what the script assigns to it while it
  // is evaluated. `inner` are the spots whose names begin with this one's: they go onto its value.
  function makeSpot(extension, name) {
    const spot = { name, value: undefined, inner: [] };
    spot.get = () => {
      if (extension.state !== 'loaded') {
        load(extension);
      }
      if (spot.inner.length > 0 && isHolder(spot.value)) {
        spot.inner.splice(0).forEach((other) => place(spot.value, other, name.length + 1));
      }
      return spot.value;
    };
    if (name !== extension.name) {
      spot.set = (value) => {
        if (extension.state !== 'loading') {
          throw new TypeError(`${name} is read-only.`);
        }
        spot.value = value;
      };
    }
    spots[name] = spot;
    return spot;
  }

  function load(extension) {
    if (extension.state === 'failed') {
      throw extension.error;
    }
    if (extension.state === 'loading') {
      return;
    }
    extension.state = 'loading';
    try {
      const native = host.createInstance(extension.name);
      if (native !== null) {
        const run = native.evaluateScript()(use('xwalk'));
        spots[extension.name].value = run(use('extension')(native));
      }
      extension.state = 'loaded';
    } catch (error) {
      extension.state = 'failed';
      extension.error = error;
      throw error;
    }
  }

  // Defines the spot on `root`, which stands for the part of its name before `start`.
  function place(root, spot, start) {
    const { name } = spot;
    let holder = root;
    let from = start;
    for (let dot = name.indexOf('.', from); dot >= 0; dot = name.indexOf('.', from)) {
      const outer = spots[name.slice(0, dot)];
      if (outer !== undefined) {
        outer.inner.push(spot);
        return;
      }
      holder = namespaceOf(holder, name.slice(from, dot));
      from = dot + 1;
    }
    defineProperty(holder, name.slice(from), {
      __proto__: null,
      get: spot.get,
      set: spot.set,
      enumerable: true,
    });
  }

  function namespaceOf(holder, key) {
    if (isHolder(holder[key])) {
      return holder[key];
    }
    const namespace = {};
    namespaces.push(namespace);
    defineProperty(holder, key, { __proto__: null, value: namespace, enumerable: true });
    return namespace;
  }

  return function publish(root, extensions) {
    const all = [];
    for (let index = 0; index < extensions.length; index += 1) {
      const { name, entryPoints } = extensions[index];
      const extension = { name, state: 'waiting', error: undefined };
      all.push(makeSpot(extension, name));
      for (let entry = 0; entry < entryPoints.length; entry += 1) {
        all.push(makeSpot(extension, entryPoints[entry]));
      }
    }
    // Every name is known by now, so it does not matter in which order they came.
    for (let index = 0; index < all.length; index += 1) {
      place(root, all[index], 0);
    }
    for (let index = 0; index < namespaces.length; index += 1) {
      Object.preventExtensions(namespaces[index]);
    }
  };
}
