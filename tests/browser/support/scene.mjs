// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The stage of a test file: one browser, and what each test starts is ended after it.
//
//   const scene = makeScene();           // at the top of the file
//   const run = await scene.run('examples/tour');
//   const page = await scene.open(run.appUrl);

import { after, afterEach, before } from 'node:test';
import path from 'node:path';

import { launchBrowser } from './chromium.mjs';
import { repository, startOrvane } from './orvane_run.mjs';

const pageLimitMs = 20_000;

class Scene {
  browser = null;
  endings = []; // what ends what the test started, the newest last
  shared = null; // the run of the whole file

  // Ends `thing` by `end` after the test.
  onEnd(end) {
    this.endings.push(end);
  }

  // `orvane run` with the application; a relative path is one of the repository.
  async run(app, options) {
    const run = await startOrvane(app && path.resolve(repository, app), options);
    this.onEnd(() => run.stop());
    return run;
  }

  // One run for all tests of the file, started by the first that asks.
  async sharedRun(app, options) {
    this.shared ??= await startOrvane(path.resolve(repository, app), options);
    return this.shared;
  }

  // A page in a browser profile of its own. `page.problems` are the errors that nobody caught.
  async open(address, options = {}) {
    const context = await this.browser.newContext({
      viewport: { width: 1920, height: 1080 },
      ...options,
    });
    this.onEnd(() => context.close());
    const page = await context.newPage();
    page.setDefaultTimeout(pageLimitMs);
    page.problems = [];
    page.on('pageerror', (error) => page.problems.push(error.message));
    if (address) {
      await page.goto(address);
    }
    return page;
  }

  async endAll() {
    const failures = [];
    for (const end of this.endings.splice(0).reverse()) {
      await Promise.resolve(end()).catch((error) => failures.push(error));
    }
    if (failures.length > 0) {
      throw failures[0];
    }
  }
}

// To be called at the top of a test file.
export function makeScene(options) {
  const scene = new Scene();
  before(async () => {
    scene.browser = await launchBrowser(options);
  });
  afterEach(() => scene.endAll());
  after(async () => {
    await scene.browser?.close();
    await scene.shared?.stop();
  });
  return scene;
}
