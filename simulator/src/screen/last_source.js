// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the viewer sees after an application asked the set for its last source: the tuner's picture
// over the application. There is no tuner behind it, so it goes after some seconds; before that
// with a key that somebody presses, or its button.

import { html, useEffect, useRef } from '../view.js';
import { contextTask, keyHistory } from '../state/streams.js';
import { Icon } from '../ui/icons.js';

const shownMs = 3000;

function goBack() {
  contextTask.value = null;
}

export function LastSource() {
  const task = contextTask.value;
  const lastPress = keyHistory.value.find((key) => !key.injected)?.number ?? 0;
  const pressBefore = useRef(0);
  useEffect(() => {
    pressBefore.current = lastPress;
    const timer = task && setTimeout(goBack, shownMs);
    return () => clearTimeout(timer);
  }, [task]);
  useEffect(() => {
    if (task && lastPress > pressBefore.current) {
      goBack();
    }
  }, [lastPress]);
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
      <button type="button" onClick=${goBack}>Back to the application</button>
    </div>
  </div>`;
}
