// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Frames whose document no server sends: their text stands in the srcdoc attribute.

import assert from 'node:assert/strict';
import test from 'node:test';

import { openFake } from './support/fake_runtime.mjs';
import { until } from './support/orvane_run.mjs';
import { makeScene } from './support/scene.mjs';

const scene = makeScene();

// What a frame's own first script finds. Quotes are &quot;, to stand in an attribute.
const tell = (name) =>
  `<script>parent.tell(&quot;${name}&quot;, typeof dravelt, document.compatMode)</script>`;

const listener = `<script>
  window.told = {};
  window.tell = (name, ...facts) => { told[name] = [...(told[name] ?? []), ...facts]; };
</script>`;

async function openWith(html) {
  const opened = await openFake(scene, { html: `<!DOCTYPE html>${listener}<body>${html}</body>` });
  const told = async (name) => {
    await opened.page.waitForFunction((wanted) => window.told[wanted], name);
    return opened.page.evaluate((wanted) => window.told[wanted], name);
  };
  return { ...opened, told };
}

const given = ['object', 'CSS1Compat'];

test('a frame in the text of the page has the object before its first script', async () => {
  const filler = '<p>text</p>'.repeat(20_000);
  const { told } = await openWith(
    `<iframe srcdoc="${tell('plain')}"></iframe>
     <iframe srcdoc="<!doctype html><p>${tell('document')}"></iframe>
     ${filler}<iframe srcdoc="${tell('late')}"></iframe>`
  );
  assert.deepEqual(await told('plain'), given);
  assert.deepEqual(await told('document'), given);
  assert.deepEqual(await told('late'), given);
});

test('a frame that a script inserts has the object, however it does so', async () => {
  const { page, told } = await openWith('<div id="place"></div>');
  const text = (name) => tell(name).replaceAll('&quot;', '"');
  await page.evaluate(
    ([property, attribute, markup]) => {
      const make = (fill) => {
        const frame = document.createElement('iframe');
        fill(frame);
        document.body.append(frame);
      };
      make((frame) => {
        frame.srcdoc = property;
      });
      make((frame) => frame.setAttribute('srcdoc', attribute));
      document.querySelector('#place').innerHTML = `<div>${markup}</div>`;
    },
    [text('property'), text('attribute'), `<iframe srcdoc="${tell('markup')}"></iframe>`]
  );
  for (const name of ['property', 'attribute', 'markup']) {
    assert.deepEqual(await told(name), given);
  }
});

test('a frame whose document is exchanged has the object again, and loads once', async () => {
  const { page, told } = await openWith(`<iframe srcdoc="${tell('first')}"></iframe>`);
  await told('first');
  await page.evaluate(
    (text) => {
      const frame = document.querySelector('iframe');
      window.loads = 0;
      frame.addEventListener('load', () => {
        window.loads += 1;
      });
      frame.srcdoc = text;
    },
    tell('second').replaceAll('&quot;', '"')
  );
  assert.deepEqual(await told('second'), given);
  await page.waitForFunction(() => window.loads > 0);
  await page.evaluate(() => new Promise(requestAnimationFrame));
  assert.equal(await page.evaluate(() => window.loads), 1);
});

test('a frame of its own has a context of its own, and is no top page', async () => {
  const { runtime, page } = await openWith('<iframe srcdoc="<p>text"></iframe>');
  const [, inner] = page.frames();
  await inner.waitForFunction(() => typeof dravelt === 'object');
  assert.equal(await inner.evaluate(() => dravelt.echo.send('from within')), 'from within');
  assert.equal(runtime.of('sync').at(-1).context, 2);
  await inner.waitForFunction(() => document.readyState === 'complete');
  const tops = () => new Map(runtime.of('state').map(({ context, top }) => [context, top]));
  await until(() => tops().size === 2, 'both to tell of themselves');
  assert.deepEqual([tops().get(1), tops().get(2)], [true, false]);
});

test('a sandboxed frame is of another origin, and is left alone', async () => {
  const { page } = await openWith('<iframe sandbox="allow-scripts" srcdoc="<p>text"></iframe>');
  assert.equal(await page.evaluate(() => document.querySelector('iframe').srcdoc), '<p>text');
});
