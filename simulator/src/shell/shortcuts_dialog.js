// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The keyboard's keys and the remote control's.

import { html } from '../view.js';
import { describeKey } from '../remote/key_table.js';
import { shortcuts } from '../remote/shortcut_table.js';
import { Dialog } from '../ui/dialog.js';

const shown = [
  ...shortcuts.filter(([, symbol]) => !/^[0-9]$/.test(symbol)),
  ['digits', '0', '0–9', 'Digits'],
];

export function ShortcutsDialog({ onClose }) {
  return html`<${Dialog} title="Keyboard shortcuts" onClose=${onClose}>
    <p>
      These keys are the remote control's while the television, the remote control or nothing has
      the keyboard's focus. With Shift, a press is a long one. Click into the application, and its
      page gets every key of the keyboard as a browser's page does.
    </p>
    <dl class="shortcuts">
      ${shown.map(
        ([typed, symbol, hint, label]) =>
          html`<div key=${typed}>
            <dt><kbd>${hint}</kbd></dt>
            <dd>${label ?? (symbol === 'minus' ? 'Minus' : describeKey(symbol).label)}</dd>
          </div>`
      )}
    </dl>
  <//>`;
}
