// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Which set this is.

import { html } from '../view.js';
import { ask } from '../api/session.js';
import { set } from '../state/set.js';
import { Select } from '../ui/controls.js';

const titles = { uhd: 'UHD', fhd: 'FHD' };

export function Profile() {
  const { name, file, profiles } = set.profile.value;
  const names = profiles.includes(name) ? profiles : [name, ...profiles];
  const panel = set.panel.value;
  return html`<div class="profile">
    <label for="profile-select">Profile</label>
    <${Select}
      id="profile-select"
      label="Device profile"
      value=${name}
      options=${names.map((each) => [each, titles[each] ?? each])}
      onChange=${(profile) => ask('profile.use', { profile })}
    />
    <span class="muted" title=${file}>${panel && `${panel.width}×${panel.height}`}</span>
  </div>`;
}
