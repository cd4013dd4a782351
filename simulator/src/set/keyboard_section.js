// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The on-screen keyboard's style and state.

import { html } from '../view.js';
import { ask } from '../api/session.js';
import { set } from '../state/set.js';
import { alignNames } from '../screen/geometry.js';
import { Facts, Section } from '../ui/section.js';

export function Keyboard() {
  const state = set.inputMethod.value;
  if (!state) {
    return null;
  }
  const { dynamic, positioned, x, y, align, recommendedEnabled, recommendedWords } = state;
  return html`<${Section} name="keyboard" title="On-screen keyboard" note=${dynamic ? '' : 'fixed'}>
    <label class="check">
      <input
        type="checkbox"
        checked=${dynamic}
        onChange=${(event) => ask('inputMethod.setDynamic', { dynamic: event.target.checked })}
      />
      Dynamic style: an application may move it
    </label>
    <${Facts}
      entries=${[
        ['Position', positioned ? `${x}, ${y}` : 'none given'],
        ['Alignment', positioned ? `${align}, ${alignNames[align]}` : null],
        ['Recommended words', recommendedEnabled ? 'on' : 'off'],
        ['Words', recommendedWords.join(', ')],
      ]}
    />
  <//>`;
}
