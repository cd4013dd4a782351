// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// node make_pictures.mjs FOLDER
// Takes the documentation's pictures of the simulator: a real run, light and dark.

import { mkdirSync } from 'node:fs';
import path from 'node:path';
import { pathToFileURL } from 'node:url';

import { launchBrowser } from './chromium.mjs';
import { repository, startOrvane, until } from './orvane_run.mjs';

const viewport = { width: 1600, height: 1000 };
const tabs = { light: 'messages', dark: 'profiling' };
const sections = ['applications', 'screenSaver'];

async function takePicture(browser, run, colorScheme, file) {
  const context = await browser.newContext({ viewport, colorScheme });
  try {
    const page = await context.newPage();
    await page.addInitScript(
      ([tab, openSections]) => {
        if (window === window.top) {
          localStorage.setItem('orvane.simulator', JSON.stringify({ tab, openSections }));
        }
      },
      [tabs[colorScheme], sections]
    );
    await page.goto(run.url);
    await page.locator('.remote-body .key').first().waitFor();
    const frame = page.frameLocator('.app-frame');
    await frame.locator('.poster').first().waitFor();
    for (const key of ['Right', 'XF86Blue', 'Right', 'XF86Red']) {
      await page.locator(`.remote-body [data-key=${key}]`).click();
    }
    await until(async () => (await page.locator('.press').count()) === 4, 'four presses');
    await page.mouse.move(800, 20);
    await page.evaluate(() => document.activeElement.blur());
    await page.evaluate(() => document.fonts.ready);
    await frame.locator('#notice').waitFor({ state: 'hidden' });
    await page.screenshot({ path: file, animations: 'disabled' });
  } finally {
    await context.close();
  }
}

/** @param {string} folder @returns {Promise<string[]>} the files */
export async function makePictures(folder, browser) {
  mkdirSync(folder, { recursive: true });
  const files = [];
  for (const colorScheme of ['light', 'dark']) {
    const run = await startOrvane(path.join(repository, 'examples/media'));
    try {
      const file = path.join(folder, `simulator-${colorScheme}.png`);
      await takePicture(browser, run, colorScheme, file);
      files.push(file);
    } finally {
      await run.stop();
    }
  }
  return files;
}

if (import.meta.url === pathToFileURL(process.argv[1]).href) {
  const browser = await launchBrowser();
  try {
    console.log((await makePictures(path.resolve(process.argv[2]), browser)).join('\n'));
  } finally {
    await browser.close();
  }
}
