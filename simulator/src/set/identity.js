// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The application's UUID on this set, and the way back to a new set.

import { html, useState } from '../view.js';
import { ask, refreshSet } from '../api/session.js';
import { set } from '../state/set.js';
import { toast } from '../state/toasts.js';
import { Button } from '../ui/controls.js';
import { Confirmation } from '../ui/dialog.js';
import { Section } from '../ui/section.js';

async function reset() {
  if ((await ask('factoryReset')) !== undefined) {
    await refreshSet();
    toast('The set is as it left the factory.');
  }
}

export function Identity() {
  const [asking, setAsking] = useState(false);
  const uuid = set.uuid.value;
  return html`<${Section} name="identity" title="Identity and reset">
    <p class="uuid">
      <span class="muted">UUID of the application</span>
      <code>${uuid ?? 'none yet: made at the first getUuid'}</code>
    </p>
    <p class="button-row">
      <${Button} kind="danger" onClick=${() => setAsking(true)}>Factory reset…<//>
    </p>
    ${
      asking &&
      html`<${Confirmation}
        title="Reset the set?"
        action="Reset"
        onConfirm=${reset}
        onClose=${() => setAsking(false)}
      >
        <p>
          Removes every setting, the data of the applications with their UUIDs, and the faults, and
          takes the feature keys from the profile again. This cannot be undone.
        </p>
      <//>`
    }
  <//>`;
}
