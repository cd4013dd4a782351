// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The browser that the tests drive: the chromium of the PATH, headless, by Playwright.

import { accessSync, constants } from 'node:fs';
import path from 'node:path';

import { chromium } from 'playwright-core';

const names = ['chromium', 'chromium-browser', 'google-chrome'];

const quiet = [
  '--no-sandbox',
  '--disable-gpu',
  '--disable-quic',
  '--no-first-run',
  '--disable-background-networking',
  '--disable-component-update',
  '--disable-sync',
];

function isExecutable(file) {
  try {
    accessSync(file, constants.X_OK);
    return true;
  } catch (error) {
    return false;
  }
}

export function findChromium() {
  const folders = (process.env.PATH ?? '').split(path.delimiter);
  const found = names
    .flatMap((name) => folders.map((folder) => path.join(folder, name)))
    .find(isExecutable);
  if (!found) {
    throw new Error(`none of ${names.join(', ')} is on the PATH; run script/setup build browser`);
  }
  return found;
}

// A browser of its own. Close it.
export function launchBrowser(options = {}) {
  return chromium.launch({
    executablePath: findChromium(),
    args: [...quiet, ...(options.args ?? [])],
    timeout: 60_000,
  });
}
