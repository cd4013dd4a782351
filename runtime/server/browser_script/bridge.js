// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The bridge of the runtime's scripts (see main.js of the page's scripts) in a browser.

import { NativeExtension } from './native_extension.js';

const lowestInt = -0x80000000;
const highestInt = 0x7fffffff;

// A number as native code takes it: cut to a whole one, and to what 32 bits hold.
function toInt(value) {
  return Math.min(Math.max(Math.trunc(value), lowestInt), highestInt) + 0;
}

// `scripts`: extension name -> its script in its wrapper. `extensions` receives, by name, those
// that this page has touched.
export function makeBridge(boot, scripts, caller, extensions) {
  const moveWindow = (call, args) =>
    caller.call({ type: 'widget', call, args }, undefined, () => `widget.${call} failed`);
  return {
    extensions: () => boot.catalogue,

    createInstance(name) {
      const made = caller.call(
        { type: 'create', extension: name },
        undefined,
        () => `${name} could not be started`
      );
      if (made === false) {
        return null;
      }
      const script = Object.hasOwn(scripts, name) ? scripts[name] : undefined;
      const extension = new NativeExtension(name, script, boot.broken?.[name], caller);
      extensions.set(name, extension);
      return extension.interface();
    },

    hasPrivilege: (privilege) =>
      caller.call(
        { type: 'privilege', privilege },
        undefined,
        () => `The runtime did not say whether ${privilege} is granted`
      ),
    moveWindow: (x, y) => moveWindow('move', [toInt(x), toInt(y)]),
    setQuarterPosition: (position) => moveWindow('setQuarterPosition', [toInt(position)]),
    widgetInfo: () => boot.app,
  };
}
