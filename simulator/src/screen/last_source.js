// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the viewer sees after an application asked the set for its last source: the tuner's picture
// over the application, until a key or the button takes it away.

import { html, useEffect } from '../view.js';
import { contextTask, keyHistory } from '../state/streams.js';
import { Icon } from '../ui/icons.js';

export function LastSource() {
  const task = contextTask.value;
  const lastKey = keyHistory.value[0];
  useEffect(() => {
    if (task && lastKey && lastKey.at > task.at) {
      contextTask.value = null;
    }
  }, [task, lastKey]);
  if (!task) {
    return null;
  }
  return html`<div class="last-source" role="dialog" aria-label="Last source">
    <div class="last-source-banner">
      <${Icon} name="source" size=${56} />
      <span>
        <strong>Last source</strong>
        <span class="last-source-task">${task.target} · ${task.action}</span>
      </span>
      <button type="button" onClick=${() => (contextTask.value = null)}>
        Back to the application
      </button>
    </div>
  </div>`;
}
