// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The panels below the television, one at a time.

import { html, useRef } from '../view.js';
import { prefer, preferences } from '../state/preferences.js';
import { consoleRows, trace } from '../state/streams.js';
import { problems } from '../problems/problems.js';
import { ConsolePanel } from '../console/console_panel.js';
import { LogPanel } from '../log/log_panel.js';
import { MessagesPanel } from '../messages/messages_panel.js';
import { ProblemsPanel } from '../problems/problems_panel.js';
import { ProfilingPanel } from '../profiling/profiling_panel.js';
import { ResourcesPanel } from '../resources/resources_panel.js';
import { count } from '../ui/format.js';

const tabs = [
  ['log', 'Log', LogPanel],
  ['messages', 'Messages', MessagesPanel, () => trace.version.value >= 0 && trace.total],
  ['profiling', 'Profiling', ProfilingPanel],
  ['resources', 'Resources', ResourcesPanel],
  ['console', 'Console', ConsolePanel, () => consoleRows.version.value >= 0 && consoleRows.total],
  ['problems', 'Problems', ProblemsPanel, () => problems.value.length],
];

function Tab({ name, title, number, selected }) {
  return html`<button
    type="button"
    role="tab"
    id=${`tab-${name}`}
    class=${`tab ${name === 'problems' && number ? 'tab-alert' : ''}`}
    aria-selected=${String(selected)}
    aria-controls="dock-panel"
    tabindex=${selected ? 0 : -1}
    onClick=${() => prefer({ tab: name })}
  >
    ${title}${number ? html`<span class="tab-number">${count(number)}</span>` : ''}
  </button>`;
}

/** The next tab for an arrow key, or null. */
function moved(key, index) {
  const last = tabs.length - 1;
  const targets = {
    ArrowRight: index === last ? 0 : index + 1,
    ArrowLeft: index === 0 ? last : index - 1,
    Home: 0,
    End: last,
  };
  return targets[key] ?? null;
}

export function Dock() {
  const list = useRef(null);
  const index = Math.max(
    0,
    tabs.findIndex(([name]) => name === preferences.value.tab)
  );
  const [name, , Panel] = tabs[index];
  const onKeyDown = (event) => {
    const next = moved(event.key, index);
    if (next !== null) {
      event.preventDefault();
      prefer({ tab: tabs[next][0] });
      list.current.children[next].focus();
    }
  };
  return html`<section class="dock" aria-label="Panels">
    <div class="tabs" role="tablist" aria-label="Panels" ref=${list} onKeyDown=${onKeyDown}>
      ${tabs.map(
        ([each, title, , number]) =>
          html`<${Tab}
            key=${each}
            name=${each}
            title=${title}
            number=${number?.()}
            selected=${each === name}
          />`
      )}
    </div>
    <div
      class=${`dock-panel dock-${name}`}
      role="tabpanel"
      id="dock-panel"
      aria-labelledby=${`tab-${name}`}
    >
      <${Panel} key=${name} />
    </div>
  </section>`;
}
