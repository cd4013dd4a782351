// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The development server's methods: each changes the state and tells what changed.

import { MockRecords } from './mock_records.mjs';
import { newState, runInfo, timeNs } from './mock_state.mjs';

const stateNames = ['UNDEFINED', 'FOREGROUND', 'BACKGROUND', 'SERVICE', 'TERMINATED'];

/** What happens to a pressed key, by the rules of the set. */
function route(state, key) {
  const grab = state.keyGrabs.find((each) => each.key === key.name);
  if (key.mandatory && !state.focused) {
    return { delivered: false, reason: 'noFocus', text: 'no application has the focus' };
  }
  if (key.mandatory) {
    return { delivered: true, reason: 'mandatory', text: 'every application receives it' };
  }
  if (grab?.mode === 'normal' && grab.app !== state.focused) {
    return { delivered: false, reason: 'grabbedByOther', text: `${grab.app} asked for it` };
  }
  if (grab) {
    const reason = grab.mode === 'normal' ? 'registered' : 'specialGrab';
    return { delivered: true, reason, text: `${grab.app} registered it (${grab.mode})` };
  }
  const text = `${state.focused} has not registered ${key.name}; call registerKey first`;
  return { delivered: false, reason: 'notRegistered', text };
}

class MockSet {
  state = newState();
  #tell;

  constructor(tell) {
    this.#tell = tell;
  }

  tell(name, data) {
    this.#tell(name, data);
    return null;
  }

  setPart(name, value) {
    this.state[name] = value;
    return this.tell(name === 'focused' ? 'focus' : name, value);
  }

  merge(name, change) {
    return this.setPart(name, { ...this.state[name], ...change });
  }

  /** Replaces the entry of a list that has the same key, or adds it. */
  put(name, key, entry) {
    return this.setPart(name, [
      ...this.state[name].filter((each) => each[key] !== entry[key]),
      entry,
    ]);
  }

  remove(name, key, value) {
    return this.setPart(
      name,
      this.state[name].filter((each) => each[key] !== value)
    );
  }

  changeApplication(id, change) {
    return this.setPart(
      'applications',
      this.state.applications.map((each) => (each.id === id ? { ...each, ...change } : each))
    );
  }

  press({ name, long = false }) {
    const key = this.state.keys.find((each) => each.name === name);
    if (!key) {
      throw new Error(`no key of the remote control is called "${name}"; see state.get`);
    }
    const event = {
      key_name: name,
      key_code: key.keyCode,
      app: this.state.focused,
      injected: false,
      long,
      time_ns: timeNs(),
      ...route(this.state, key),
    };
    this.tell('key', event);
    this.merge('screenSaver', { on: false, remainingMs: 300000 });
    return event;
  }

  reset() {
    this.state = newState();
    for (const name of ['settings', 'faults', 'features', 'applications']) {
      this.tell(name, this.state[name]);
    }
    return null;
  }
}

function deviceMethods(set) {
  return {
    'state.get': () => ({ ...set.state, time_ns: timeNs() }),
    'keys.press': (params) => set.press(params),
    'profile.use': ({ profile }) => {
      const scale = profile === 'uhd' ? 2 : 1;
      set.setPart('panel', { width: 1920 * scale, height: 1080 * scale });
      return set.merge('profile', { name: profile });
    },
    'features.set': (feature) => set.put('features', 'key', feature),
    'features.remove': ({ key }) => set.remove('features', 'key', key),
    'settings.set': (setting) => set.put('settings', 'key', setting),
    'settings.unset': ({ key }) => set.remove('settings', 'key', key),
    'inputMethod.setDynamic': ({ dynamic }) => set.merge('inputMethod', { dynamic }),
    'screenSaver.activity': () => set.merge('screenSaver', { on: false, remainingMs: 300000 }),
    'clock.advance': ({ ms }) => {
      const remainingMs = Math.max(0, set.state.screenSaver.remainingMs - ms);
      return set.merge('screenSaver', { remainingMs, on: remainingMs === 0 });
    },
    'faults.set': (fault) => set.put('faults', 'function', fault),
    'faults.clear': ({ function: name }) =>
      name ? set.remove('faults', 'function', name) : set.setPart('faults', []),
    factoryReset: () => set.reset(),
  };
}

function applicationMethods(set) {
  const launched = { running: true, state: 1, stateName: 'FOREGROUND' };
  const ended = { running: false, state: 4, stateName: 'TERMINATED' };
  return {
    'applications.setState': ({ id, state }) =>
      set.changeApplication(id, { state: stateNames.indexOf(state), stateName: state }),
    'applications.focus': ({ id }) => set.setPart('focused', id),
    'applications.install': ({ folder }) => {
      const id = `OrvaneMore.${folder}`;
      const more = { id, name: folder, folder, package: 'OrvaneMore', version: '1.0.0' };
      set.put('applications', 'id', { ...more, ...ended, metadata: [], privileges: [] });
      return more;
    },
    'applications.launch': ({ id }) => set.changeApplication(id, launched),
    'applications.terminate': ({ id }) => set.changeApplication(id, ended),
  };
}

function runMethods(set, appUrl) {
  let process = { state: 'running', pid: 4711, deaths: [] };
  const setProcess = (next) => {
    process = next;
    return set.tell('process', process);
  };
  return {
    'run.info': () => runInfo(appUrl),
    'pages.list': () => [
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
    ],
    'page.reload': () => null,
    'process.get': () => process,
    'process.restart': () => setProcess({ ...process, state: 'running', pid: process.pid + 1 }),
    'stat.read': ({ resource }) => ({
      value: (resource === 'CPU' ? 3 : 58) + Math.round(Math.random() * 6),
    }),
    'ime.input': () => null,
    screenshot: () => {
      throw new Error('this server has no browser of its own to take a picture with');
    },
    // What only a development server can do: tell the page anything.
    'dev.process': setProcess,
    'dev.tell': ({ name, data }) => set.tell(name, data),
    'dev.part': ({ name, value }) => set.setPart(name, value),
  };
}

/** @param {(events: {name: string, data: any}[]) => void} emit tells every connected page */
export function newMethods(emit, appUrl) {
  const tell = (name, data) => emit([{ name, data }]);
  const set = new MockSet(tell);
  const records = new MockRecords(tell);
  return {
    ...deviceMethods(set),
    ...applicationMethods(set),
    ...runMethods(set, appUrl),
    ...records.methods(runInfo(appUrl).app),
  };
}
