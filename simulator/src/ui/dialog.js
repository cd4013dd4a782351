// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A modal dialog in the browser's own element: focus stays inside, Escape closes it.

import { html, useEffect, useRef } from '../view.js';
import { Button, IconButton } from './controls.js';

export function Dialog({ title, onClose, children, actions }) {
  const element = useRef(null);
  useEffect(() => {
    element.current.showModal();
  }, []);
  return html`<dialog
    ref=${element}
    class="dialog"
    aria-labelledby="dialog-title"
    onClose=${onClose}
  >
    <div class="dialog-head">
      <h2 id="dialog-title">${title}</h2>
      <${IconButton} icon="close" label="Close" onClick=${() => element.current.close()} />
    </div>
    <div class="dialog-body">${children}</div>
    ${actions && html`<div class="dialog-actions">${actions(() => element.current.close())}</div>`}
  </dialog>`;
}

/** Asks before something that cannot be undone. */
export function Confirmation({ title, children, action, onConfirm, onClose }) {
  const actions = (close) =>
    html`<${Button} onClick=${close}>Cancel<//>
      <${Button}
        kind="danger"
        onClick=${() => {
          close();
          onConfirm();
        }}
        >${action}<//
      >`;
  return html`<${Dialog} title=${title} onClose=${onClose} actions=${actions}>${children}<//>`;
}
