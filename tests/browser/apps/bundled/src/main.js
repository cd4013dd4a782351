// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A small application in the style of today's frameworks: components, hooks, a controlled field.
// Built by the test into assets/, as a bundler does it.

import { h, render } from 'preact';
import { useEffect, useState } from 'preact/hooks';

const orvane = window.dravelt?.orvane;

function useKey(handler) {
  useEffect(() => {
    window.addEventListener('keydown', handler);
    return () => window.removeEventListener('keydown', handler);
  });
}

function Field({ value, onChange }) {
  return h('input', {
    id: 'field',
    value,
    onInput: (event) => onChange(event.currentTarget.value.toUpperCase()),
  });
}

function App() {
  const [keys, setKeys] = useState([]);
  const [text, setText] = useState('');
  const [state, setState] = useState('');
  useKey((event) => setKeys([...keys, event.keyCode]));
  useEffect(() => {
    orvane.registerKey(['ColorF0Red']);
    setState(orvane.getAppState());
  }, []);
  return h(
    'main',
    null,
    h('h1', null, `Version ${orvane.getVersion()}`),
    h('p', { id: 'state' }, state),
    h('p', { id: 'keys' }, keys.join(' ')),
    h(Field, { value: text, onChange: setText }),
    h('p', { id: 'text' }, text)
  );
}

render(h(App), document.getElementById('root'));
