// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The development server's methods: each changes the state and tells what changed.

import { newState, runInfo, timeNs } from './mock_state.mjs';

const stateNames = ['UNDEFINED', 'FOREGROUND', 'BACKGROUND', 'SERVICE', 'TERMINATED'];

/** What happens to a pressed key, by the rules of the set. */
function route(state, key) {
  const grab = state.keyGrabs.find((each) => each.key === key.name);
  if (key.mandatory) {
    return { delivered: true, reason: 'mandatory', text: 'every application receives it' };
  }
  if (grab) {
    const reason = grab.mode === 'normal' ? 'registered' : 'specialGrab';
    return { delivered: true, reason, text: `${grab.app} registered it (${grab.mode})` };
  }
  const text = `${state.focused} has not registered ${key.name}; call registerKey first`;
  return { delivered: false, reason: 'notRegistered', text };
}

export function newMethods(emit, appUrl) {
  let state = newState();
  let process = { state: 'running', pid: 4711, deaths: [] };
  let seq = 0;
  const log = [];
  const trace = [];
  const markers = [];
  const pages = [
    {
      context: 1,
      href: `${appUrl}index.html`,
      title: 'Orvane tour',
      top: true,
      visible: true,
      focused: true,
      editing: false,
      isolated: true,
      opened_ns: timeNs(),
      instances: ['dravelt.orvane'],
      runtime: 'ready',
    },
  ];

  const tell = (name, data) => emit([{ name, data }]);
  const setPart = (name, value) => {
    state[name] = value;
    tell(name, value);
    return null;
  };

  function write(count, { priority = 4, letter = 'I', tag = 'QM_WEBAPI', text = 'a line' } = {}) {
    const lines = [];
    for (let index = 0; index < count; ++index) {
      lines.push({
        seq: ++seq,
        time_ns: timeNs(),
        pid: 4711,
        tid: 4712,
        priority,
        letter,
        tag,
        text: count > 1 ? `${text} ${index}` : text,
      });
    }
    log.push(...lines);
    tell('log', lines);
    return null;
  }

  function call(peer, payload, reply, us, more = {}) {
    const record = {
      seq: trace.length + 1,
      time_ns: timeNs(),
      context: 1,
      direction: 'fromPage',
      kind: 'nativeSync',
      peer,
      payload: JSON.stringify(payload),
      reply: JSON.stringify(reply),
      us,
      ...more,
    };
    trace.push(record);
    tell('trace', [record]);
  }

  function mark(text) {
    const marker = { time_ns: timeNs(), length: text.length, text };
    markers.push(marker);
    tell('kernelMarker', marker);
  }

  const changeApplication = (id, change) =>
    setPart(
      'applications',
      state.applications.map((each) => (each.id === id ? { ...each, ...change } : each))
    );

  return {
    hooks: { write, call, mark, tell, state: () => state, pages },
    'run.info': () => runInfo(appUrl),
    'state.get': () => ({ ...state, time_ns: timeNs() }),
    'pages.list': () => pages,
    'page.reload': () => null,
    'process.get': () => process,
    'process.restart': () => {
      process = { ...process, state: 'running', pid: 4800 };
      tell('process', process);
      return null;
    },
    'dev.process': (next) => {
      process = next;
      tell('process', process);
      return null;
    },
    'dev.tell': ({ name, data }) => tell(name, data) ?? null,
    'dev.part': ({ name, value }) => setPart(name, value),
    'dev.call': ({ peer, payload, reply, us, more }) => call(peer, payload, reply, us, more),
    'dev.mark': ({ text }) => mark(text),
    'trace.list': ({ since = 0 }) => ({
      records: trace.filter((each) => each.seq > since),
      next: trace.length,
    }),
    'trace.clear': () => {
      trace.length = 0;
      return null;
    },
    'trace.export': () => ({
      orvane: 1,
      created: new Date().toISOString(),
      app: runInfo(appUrl).app,
      profile: 'uhd',
      records: trace,
    }),
    'log.list': ({ since = 0, limit = 5000 }) => {
      const lines = log.filter((each) => each.seq > since).slice(0, limit);
      return { lines, next: lines.at(-1)?.seq ?? since };
    },
    'log.clear': () => {
      log.length = 0;
      return null;
    },
    'log.write': ({ count = 1, ...line }) => write(count, line),
    'console.list': () => ({ entries: [], next: 0 }),
    'explain.list': () => [],
    'markers.list': () => markers,
    'keys.press': ({ name, long = false }) => {
      const key = state.keys.find((each) => each.name === name);
      if (!key) {
        throw new Error(`no key of the remote control is called "${name}"; see state.get`);
      }
      const event = {
        key_name: name,
        key_code: key.keyCode,
        app: state.focused,
        injected: false,
        long,
        time_ns: timeNs(),
        ...route(state, key),
      };
      tell('key', event);
      setPart('screenSaver', { ...state.screenSaver, on: false, remainingMs: 300000 });
      return event;
    },
    'profile.use': ({ profile }) => {
      setPart('profile', { ...state.profile, name: profile });
      return setPart('panel', {
        width: profile === 'uhd' ? 3840 : 1920,
        height: profile === 'uhd' ? 2160 : 1080,
      });
    },
    'features.set': (feature) =>
      setPart('features', [...state.features.filter((each) => each.key !== feature.key), feature]),
    'features.remove': ({ key }) =>
      setPart(
        'features',
        state.features.filter((each) => each.key !== key)
      ),
    'applications.setState': ({ id, state: next }) => {
      const number = typeof next === 'number' ? next : stateNames.indexOf(next);
      return changeApplication(id, { state: number, stateName: stateNames[number], running: true });
    },
    'applications.focus': ({ id }) => setPart('focused', id) ?? tell('focus', id) ?? null,
    'applications.launch': ({ id }) =>
      changeApplication(id, { running: true, state: 1, stateName: 'FOREGROUND' }),
    'applications.terminate': ({ id }) =>
      changeApplication(id, { running: false, state: 4, stateName: 'TERMINATED' }),
    'inputMethod.setDynamic': ({ dynamic }) =>
      setPart('inputMethod', { ...state.inputMethod, dynamic }),
    'settings.set': (setting) =>
      setPart('settings', [...state.settings.filter((each) => each.key !== setting.key), setting]),
    'settings.unset': ({ key }) =>
      setPart(
        'settings',
        state.settings.filter((each) => each.key !== key)
      ),
    'screenSaver.activity': () =>
      setPart('screenSaver', { ...state.screenSaver, on: false, remainingMs: 300000 }),
    'clock.advance': ({ ms }) => {
      const remainingMs = Math.max(0, state.screenSaver.remainingMs - ms);
      return setPart('screenSaver', { ...state.screenSaver, remainingMs, on: remainingMs === 0 });
    },
    'faults.set': (fault) =>
      setPart('faults', [
        ...state.faults.filter((each) => each.function !== fault.function),
        fault,
      ]),
    'faults.clear': ({ function: name }) =>
      setPart('faults', name ? state.faults.filter((each) => each.function !== name) : []),
    factoryReset: () => {
      state = newState();
      for (const name of ['settings', 'faults', 'features', 'applications']) {
        tell(name, state[name]);
      }
      return null;
    },
    'stat.read': ({ resource }) => ({
      value:
        resource === 'CPU' ? 3 + Math.round(Math.random() * 9) : 58 + Math.round(Math.random() * 3),
    }),
    'ime.input': (input) => tell('imeResult', { ok: true, ...input }) ?? null,
    screenshot: () => {
      throw new Error('this server has no browser of its own to take a picture with');
    },
  };
}
