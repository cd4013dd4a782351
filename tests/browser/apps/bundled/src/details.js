// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A view of its own file, deep in the history: what the set answers, it answers here, too.

import { h } from 'preact';
import { useEffect, useState } from 'preact/hooks';

export function Details({ route, back }) {
  const [memory, setMemory] = useState(0);
  useEffect(() => {
    window.dravelt.orvane.getSystemStat('MEMORY', ({ memoryUsage }) => setMemory(memoryUsage));
    const onKey = (event) => event.keyCode === 10009 && back();
    window.addEventListener('keydown', onKey);
    return () => window.removeEventListener('keydown', onKey);
  }, []);
  return h(
    'main',
    { id: 'details' },
    h('p', { id: 'route' }, route),
    h('p', { id: 'focused' }, window.dravelt.orvane.getForegroundAppId()),
    h('p', { id: 'memory' }, memory)
  );
}
