// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Presses on the remote control.

import { until } from './orvane_run.mjs';

// Presses the key, and returns once the page has had its keyup.
export async function pressed(run, page, name) {
  await page.evaluate(() => {
    window.keyUps = 0;
    const count = () => {
      window.keyUps += 1;
    };
    for (const view of [
      window,
      ...[...document.querySelectorAll('iframe')].map((f) => f.contentWindow),
    ]) {
      view.addEventListener('keyup', count, { capture: true, once: true });
    }
  });
  const result = await until(async () => {
    const report = await run.call('keys.press', { name });
    return report.delivered === undefined ? null : report;
  }, 'the press');
  if (result.delivered) {
    await page.waitForFunction(() => window.keyUps > 0);
  }
  return result;
}
