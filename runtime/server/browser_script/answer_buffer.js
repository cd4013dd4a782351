// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Shared memory in which a worker hands an answer to a page that cannot run its event loop, because
// its script waits. The page names the call that it waits for; the worker writes the answer's text
// as UTF-16 units, in pieces where it is long, and the page takes each piece.
//
// Page and worker each make an AnswerBuffer over the same memory. One call at a time.

import {
  relax,
  atomicLoad,
  atomicNotify,
  atomicStore,
  atomicWait,
  callFunction,
} from './builtins.js';
import { now, textFromUnits } from './builtins.js';

// Places in the control words.
const wanted = 0; // the call that the page waits for, 0: none
const ready = 1; // the call whose piece lies in the buffer, 0: taken
const length = 2; // of the piece, in units
const more = 3; // 1: another piece follows
const linked = 4; // 1: the worker's connection has been up, so that calls may go its way
const controlWords = 8;

const unitsPerPiece = 64 * 1024;
// What one String.fromCharCode call takes without trouble for any engine's stack.
const unitsPerCall = 8 * 1024;
// The page takes a piece within microseconds; one that does not has given up.
const takeLimitMs = 2000;
// Reading the clock costs more than a look at the memory.
const looksPerClock = 64;

export const answerBufferBytes = controlWords * 4 + unitsPerPiece * 2;

export class AnswerBuffer {
  constructor(memory) {
    this.control = new Int32Array(memory, 0, controlWords);
    this.units = new Uint16Array(memory, controlWords * 4, unitsPerPiece);
  }

  // The worker's side.

  setLinked() {
    atomicStore(this.control, linked, 1);
  }

  isWanted(id) {
    return atomicLoad(this.control, wanted) === id;
  }

  write(id, text) {
    let offset = 0;
    do {
      const count = Math.min(unitsPerPiece, text.length - offset);
      for (let index = 0; index < count; index += 1) {
        this.units[index] = text.charCodeAt(offset + index);
      }
      offset += count;
      this.control[length] = count;
      this.control[more] = offset < text.length ? 1 : 0;
      atomicStore(this.control, ready, id);
    } while (
      offset < text.length &&
      atomicWait(this.control, ready, id, takeLimitMs) !== 'timed-out'
    );
  }

  // The page's side.

  isLinked() {
    return atomicLoad(this.control, linked) === 1;
  }

  // Before the call is sent.
  want(id) {
    atomicStore(this.control, ready, 0);
    atomicStore(this.control, wanted, id);
  }

  // Blocks until the answer is there; null when `end`, a time of now(), passes first.
  read(id, end) {
    let text = '';
    do {
      if (!this.spin(id, end)) {
        atomicStore(this.control, wanted, 0);
        return null;
      }
      text += this.takePiece();
    } while (this.another);
    atomicStore(this.control, wanted, 0);
    return text;
  }

  // A page's main thread may not sleep on shared memory, so it looks again and again.
  spin(id, end) {
    for (;;) {
      for (let look = 0; look < looksPerClock; look += 1) {
        if (atomicLoad(this.control, ready) === id) {
          return true;
        }
        relax();
      }
      if (now() > end) {
        return false;
      }
    }
  }

  takePiece() {
    const count = this.control[length];
    this.another = this.control[more] === 1;
    let text = '';
    for (let start = 0; start < count; start += unitsPerCall) {
      const end = Math.min(start + unitsPerCall, count);
      text += callFunction(textFromUnits, null, this.units.slice(start, end));
    }
    atomicStore(this.control, ready, 0);
    atomicNotify(this.control, ready, 1);
    return text;
  }
}
