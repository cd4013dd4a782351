// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Keys and text that reach a page, from the remote control and from the keyboard.

import assert from 'node:assert/strict';
import test from 'node:test';

import { openFake } from './support/fake_runtime.mjs';
import { until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';

const scene = makeScene();

// Writes down the events of a page, with what the tests look at.
function record() {
  const types = 'keydown keypress keyup click beforeinput input change submit';
  const members = ['key', 'code', 'keyCode', 'which', 'repeat', 'data', 'inputType'];
  window.events = [];
  for (const type of types.split(' ')) {
    window.addEventListener(type, (event) => {
      const seen = { type, target: event.target.id };
      members.forEach((name) => {
        seen[name] = event[name];
      });
      window.events.push(seen);
      if (type === 'submit') {
        event.preventDefault();
      }
    });
  }
}

const recorder = `<script>(${record})()</script>`;

async function openWith(body) {
  const { runtime, page } = await openFake(scene, {
    html: `<!DOCTYPE html><title>keys</title>${recorder}<body>${body}</body>`,
  });
  await until(() => runtime.context.socket, 'the socket');
  return {
    runtime,
    page,
    // Sends a frame and waits until the page has seen `count` events in all; returns these.
    async send(frame, count) {
      runtime.context.send(frame);
      await page.waitForFunction((number) => window.events.length >= number, count);
      return page.evaluate(() => window.events.splice(0));
    },
  };
}

const key = (name, code, phase = 'press') => ({
  type: 'key',
  key_name: name,
  key_code: code,
  phase,
});
const types = (events) => events.map(({ type }) => type);

test('a key of the remote control has the code and the name that a set gives it', async () => {
  const { send } = await openWith('<div id="here" tabindex="0" autofocus></div>');
  const events = await send(key('XF86Red', 403), 2);
  assert.deepEqual(types(events), ['keydown', 'keyup']);
  for (const event of events) {
    assert.deepEqual(
      [event.key, event.keyCode, event.which, event.code, event.target],
      ['XF86Red', 403, 403, '', 'here']
    );
  }
});

test('arrows, Enter and digits are named as on a keyboard', async () => {
  const { send } = await openWith('');
  const arrow = await send(key('Left', 37, 'down'), 1);
  assert.deepEqual([arrow[0].key, arrow[0].code, arrow[0].keyCode], ['ArrowLeft', 'ArrowLeft', 37]);
  const digit = await send(key('5', 53), 3);
  assert.deepEqual(types(digit), ['keydown', 'keypress', 'keyup']);
  assert.deepEqual([digit[0].key, digit[0].code, digit[1].keyCode], ['5', 'Digit5', 53]);
  const enter = await send(key('Return', 13), 3);
  assert.deepEqual([enter[0].key, enter[0].keyCode, enter[0].code], ['Enter', 13, 'Enter']);
});

test('a long press repeats', async () => {
  const { send } = await openWith('');
  await send(key('Down', 40, 'down'), 1);
  const repeated = await send({ ...key('Down', 40, 'down'), repeat: true }, 1);
  assert.equal(repeated[0].repeat, true);
  const up = await send(key('Down', 40, 'up'), 1);
  assert.deepEqual(types(up), ['keyup']);
});

test('Enter activates the focused button and link, unless the page prevents it', async () => {
  const { page, send } = await openWith(
    '<button id="button" autofocus>Go</button><a id="link" href="#there">There</a>'
  );
  const events = await send(key('Return', 13), 4);
  assert.deepEqual(types(events), ['keydown', 'keypress', 'click', 'keyup']);
  await page.focus('#link');
  await send(key('Return', 13), 4);
  assert.match(page.url(), /#there$/);
  await page.evaluate(() =>
    document.addEventListener('keydown', (event) => event.preventDefault(), { once: true })
  );
  const prevented = await send(key('Return', 13), 2);
  assert.deepEqual(types(prevented), ['keydown', 'keyup']);
});

test('keys reach the focused element of a frame, as events of that frame', async () => {
  const { runtime, page } = await openFake(scene, {
    html: (pathname) =>
      pathname === '/inner'
        ? `<!DOCTYPE html>${recorder}<input id="inside">`
        : '<!DOCTYPE html><body><iframe src="/inner"></iframe></body>',
  });
  await until(() => runtime.contexts.every(({ socket }) => socket), 'the sockets');
  const frame = page.frames()[1];
  await frame.focus('#inside');
  const outer = runtime.contexts[0];
  outer.send(key('5', 53));
  await frame.waitForFunction(() => window.events.some(({ type }) => type === 'keyup'));
  const own = await frame.evaluate(() => [
    window.events.every(({ target }) => target === 'inside'),
    document.getElementById('inside').value,
  ]);
  assert.deepEqual(own, [true, '5']);
});

test('typed text makes the events that frameworks look at', async () => {
  const { page, send } = await openWith('<input id="field" autofocus maxlength="6">');
  await page.evaluate(() => {
    // As frameworks with controlled fields do, to tell their own changes from a person's.
    const field = document.getElementById('field');
    const { get, set } = Object.getOwnPropertyDescriptor(HTMLInputElement.prototype, 'value');
    window.assigned = [];
    Object.defineProperty(field, 'value', {
      get,
      set(value) {
        window.assigned.push(value);
        set.call(this, value);
      },
      configurable: true,
    });
  });
  const events = await send({ type: 'ime', op: 'text', text: 'news' }, 2);
  assert.deepEqual(types(events), ['beforeinput', 'input']);
  assert.deepEqual([events[1].data, events[1].inputType], ['news', 'insertText']);
  await send({ type: 'ime', op: 'backspace' }, 2);
  await send({ type: 'ime', op: 'text', text: 'abcdef' }, 2);
  assert.equal(await page.inputValue('#field'), 'newabc');
  await send({ type: 'ime', op: 'clear' }, 2);
  assert.equal(await page.inputValue('#field'), '');
  assert.deepEqual(await page.evaluate(() => window.assigned), []);
});

test('text goes in where the caret is, and into fields of every kind', async () => {
  const { page, send } = await openWith(
    '<input id="mail" type="email"><input id="number" type="number">' +
      '<textarea id="area">ab</textarea><div id="rich" contenteditable></div>'
  );
  const type = async (selector, text) => {
    await page.focus(selector);
    await send({ type: 'ime', op: 'text', text }, 2);
  };
  await type('#mail', 'a@b.c');
  await type('#number', '42');
  await page.evaluate(() => document.getElementById('area').setSelectionRange(1, 1));
  await type('#area', '-');
  await send({ type: 'ime', op: 'enter' }, 4);
  await type('#rich', 'rich');
  const values = await page.evaluate(() => [
    document.getElementById('mail').value,
    document.getElementById('number').value,
    document.getElementById('area').value,
    document.getElementById('rich').textContent,
  ]);
  assert.deepEqual(values, ['a@b.c', '42', 'a-\nb', 'rich']);
});

test('Enter on the on-screen keyboard sends the form', async () => {
  const { send } = await openWith('<form><input id="field" autofocus></form>');
  const events = await send({ type: 'ime', op: 'enter' }, 4);
  assert.ok(types(events).includes('submit'), JSON.stringify(types(events)));
  assert.equal(events[0].keyCode, 13);
});

test('typing works while the page has not the focus of the browser', async () => {
  const { runtime, page } = await openWith('<input id="field" autofocus>');
  const other = await page.context().newPage();
  await other.bringToFront();
  runtime.context.send({ type: 'ime', op: 'text', text: 'away' });
  await page.waitForFunction(() => document.getElementById('field').value === 'away');
});

test('arrows move the caret, a range and a list, and scroll', async () => {
  const { page, send, runtime } = await openWith(
    '<input id="text" value="abc"><input id="range" type="range" value="50">' +
      '<select id="list"><option>1<option>2</select>' +
      '<div id="tall" tabindex="0" style="height:4000px">'
  );
  await page.focus('#text');
  await page.evaluate(() => document.getElementById('text').setSelectionRange(3, 3));
  await send(key('Left', 37), 2);
  assert.equal(await page.evaluate(() => document.getElementById('text').selectionStart), 2);
  await page.focus('#range');
  await send(key('Right', 39), 4);
  assert.equal(await page.inputValue('#range'), '51');
  await page.focus('#list');
  await send(key('Down', 40), 4);
  assert.equal(await page.inputValue('#list'), '2');
  await page.evaluate(() => document.getElementById('tall').focus({ preventScroll: true }));
  runtime.context.send(key('Down', 40));
  await page.waitForFunction(() => window.scrollY > 0);
});

test('keys of the keyboard go the way of the remote control', async () => {
  const { runtime, page } = await openWith('<div id="here" tabindex="0" autofocus></div>');
  for (const pressed of ['F1', '7', 'Backspace', 'ArrowLeft', 'Enter']) {
    await page.keyboard.press(pressed);
  }
  await until(() => runtime.of('keyReport').length === 2, 'the reports');
  assert.deepEqual(
    runtime.of('keyPress').map(({ key_name: name }) => name),
    ['XF86Red', '7', 'XF86Back']
  );
  assert.deepEqual(
    runtime.of('keyReport').map(({ key_name: name }) => name),
    ['Left', 'Return']
  );
  const seen = await page.evaluate(() => window.events.map(({ key: name }) => name));
  assert.ok(
    seen.every((name) => name === 'ArrowLeft' || name === 'Enter'),
    seen.join(' ')
  );
});

test('a person who types in a field keeps the keys for it', async () => {
  const { runtime, page } = await openWith('<input id="field" autofocus>');
  await page.keyboard.type('a17');
  await page.keyboard.press('Backspace');
  assert.equal(await page.inputValue('#field'), 'a1');
  assert.deepEqual(runtime.of('keyPress'), []);
});
