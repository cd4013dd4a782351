// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A small application in the style of today's frameworks: components, hooks, a controlled field, a
// router over the history, a view that is loaded when it is needed, and a store in localStorage.
// Built by the test into assets/, as a bundler does it.

import { h, render } from 'preact';
import { useEffect, useState } from 'preact/hooks';

import { useRoute } from './router.js';
import { countStart } from './store.js';
import './style.css';

const orvane = window.dravelt?.orvane;
const starts = countStart();

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

function Home({ open }) {
  const [keys, setKeys] = useState([]);
  const [text, setText] = useState('');
  const [state, setState] = useState('');
  useKey((event) => {
    setKeys([...keys, event.keyCode]);
    if (event.keyCode === 404) {
      open('details/7');
    }
  });
  useEffect(() => {
    orvane.registerKey(['ColorF0Red', 'ColorF1Green']);
    setState(orvane.getAppState());
  }, []);
  return h(
    'main',
    null,
    h('h1', null, `Version ${orvane.getVersion()}`),
    h('p', { id: 'state' }, state),
    h('p', { id: 'starts' }, starts),
    h('p', { id: 'keys' }, keys.join(' ')),
    h(Field, { value: text, onChange: setText }),
    h('p', { id: 'text' }, text)
  );
}

function App() {
  const { route, open, back } = useRoute();
  const [views, setViews] = useState({});
  useEffect(() => {
    if (route && !views.Details) {
      import('./details.js').then(({ Details }) => setViews({ Details }));
    }
  }, [route]);
  if (!route) {
    return h(Home, { open });
  }
  return views.Details && h(views.Details, { route, back });
}

render(h(App), document.getElementById('root'));
