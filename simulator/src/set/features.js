// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The feature keys of the device profile: changes last as long as the set runs.

import { html } from '../view.js';
import { ask } from '../api/session.js';
import { set } from '../state/set.js';
import { EditList } from '../ui/edit_list.js';
import { Section } from '../ui/section.js';

const types = ['string', 'int', 'bool', 'double'];

export function Features() {
  const features = set.features.value ?? [];
  const groupOf = (key) => features.find((each) => each.key === key)?.group;
  const onSet = ({ key, type, text }) =>
    ask('features.set', { key, type, text, group: groupOf(key) ?? 'custom' });
  return html`<${Section} name="features" title="Feature keys" note=${features.length}>
    <${EditList}
      label="feature keys"
      keyHint="example.com/feature/name"
      entries=${features}
      types=${types}
      onSet=${onSet}
      onRemove=${({ key }) => ask('features.remove', { key })}
    />
  <//>`;
}
