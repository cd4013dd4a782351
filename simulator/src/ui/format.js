// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// How times, sizes and counts are written.

const numbers = new Intl.NumberFormat('en');

export function count(number) {
  return numbers.format(number);
}

export function plural(number, one, many = `${one}s`) {
  return `${count(number)} ${number === 1 ? one : many}`;
}

function pad(number, length = 2) {
  return String(number).padStart(length, '0');
}

/** 14:03:59.123, in the viewer's time zone. @param {number} ns since 1970 */
export function clockTime(ns) {
  const time = new Date(ns / 1e6);
  const seconds = `${pad(time.getSeconds())}.${pad(time.getMilliseconds(), 3)}`;
  return `${pad(time.getHours())}:${pad(time.getMinutes())}:${seconds}`;
}

/** 0.42 ms, 12.3 ms, 1.20 s. */
export function duration(ms) {
  if (ms === 0) {
    return '0 ms';
  }
  if (ms < 1) {
    return `${ms.toFixed(2)} ms`;
  }
  if (ms < 1000) {
    return `${ms.toFixed(ms < 100 ? 1 : 0)} ms`;
  }
  return `${(ms / 1000).toFixed(2)} s`;
}

/** 4:59 */
export function minutes(ms) {
  const seconds = Math.max(0, Math.ceil(ms / 1000));
  return `${Math.floor(seconds / 60)}:${pad(seconds % 60)}`;
}

export function bytes(number) {
  return number < 1024 ? `${number} B` : `${(number / 1024).toFixed(1)} KiB`;
}

/** 20261121-140359, for the names of saved files. */
export function fileStamp(now = new Date()) {
  const date = `${now.getFullYear()}${pad(now.getMonth() + 1)}${pad(now.getDate())}`;
  return `${date}-${pad(now.getHours())}${pad(now.getMinutes())}${pad(now.getSeconds())}`;
}
