// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The browser's own functions, taken before the page's first script runs. A page may replace any of
// them later (a mock WebSocket, fake timers, a patched XMLHttpRequest), and the runtime goes on
// with these. Methods take their object first: send(socket, text).

const { apply, construct } = Reflect;

function method(object, name) {
  const own = object[name];
  return (self, ...args) => apply(own, self, args);
}

function getter(object, name) {
  const { get } = Object.getOwnPropertyDescriptor(object, name);
  return (self) => apply(get, self, []);
}

// A function of the global object, which wants that object as its receiver.
function globalFunction(name) {
  const own = globalThis[name];
  return (...args) => apply(own, globalThis, args);
}

function maker(name) {
  const constructor = globalThis[name];
  return constructor && ((...args) => construct(constructor, args));
}

export const { parse } = JSON;
const { stringify: writeJson } = JSON;
export const { setPrototypeOf } = Object;

// A message as JSON, whatever toJSON functions the page has given to every object or array. Its
// members are plain values, or an array or object of plain values.
export function stringify(message) {
  const bare = { __proto__: null, ...message };
  for (const name in bare) {
    if (typeof bare[name] === 'object' && bare[name] !== null) {
      bare[name] = Array.isArray(bare[name])
        ? setPrototypeOf([...bare[name]], null)
        : { __proto__: null, ...bare[name] };
    }
  }
  return writeJson(bare);
}
export const addListener = method(EventTarget.prototype, 'addEventListener');
export const clearTimer = globalFunction('clearTimeout');
export const startTimer = globalFunction('setTimeout');
const readClock = method(performance, 'now');
const clock = performance;
// Milliseconds that never go back.
export const now = () => readClock(clock);

export const atomicLoad = Atomics.load;
export const atomicStore = Atomics.store;
export const atomicWait = Atomics.wait;
export const atomicNotify = Atomics.notify;
// Lets the processor's other thread go first while this one looks at memory again and again.
export const relax = Atomics.pause ?? (() => {});
export const textFromUnits = String.fromCharCode;
export const callFunction = apply;
export const { isView } = ArrayBuffer;
export const lengthOfBuffer = getter(ArrayBuffer.prototype, 'byteLength');

const openSocket = maker('WebSocket');
// A socket that something else put in the place of the browser's may have a plain property.
const binaryType = Object.getOwnPropertyDescriptor(WebSocket.prototype, 'binaryType');
export function makeSocket(address) {
  const socket = openSocket(address);
  if (binaryType?.set) {
    apply(binaryType.set, socket, ['arraybuffer']);
  } else {
    socket.binaryType = 'arraybuffer';
  }
  return socket;
}
export const sendOnSocket = method(WebSocket.prototype, 'send');
export const closeSocket = method(WebSocket.prototype, 'close');

// What only a document has; undefined in a worker.
const inDocument = typeof document !== 'undefined';
export const makeWorker = inDocument ? maker('Worker') : undefined;
export const postToWorker =
  inDocument && globalThis.Worker ? method(Worker.prototype, 'postMessage') : undefined;
export const makeSharedBuffer = maker('SharedArrayBuffer');
export const makeRequest = maker('XMLHttpRequest');
export const openRequest = inDocument ? method(XMLHttpRequest.prototype, 'open') : undefined;
export const sendRequest = inDocument ? method(XMLHttpRequest.prototype, 'send') : undefined;
export const setHeader = inDocument
  ? method(XMLHttpRequest.prototype, 'setRequestHeader')
  : undefined;
export const statusOf = inDocument ? getter(XMLHttpRequest.prototype, 'status') : undefined;
export const bodyOf = inDocument ? getter(XMLHttpRequest.prototype, 'responseText') : undefined;
const beacon =
  inDocument && navigator.sendBeacon ? method(Navigator.prototype, 'sendBeacon') : () => false;
export const sendBeacon = (address) => beacon(navigator, address);
export const fetchAddress = inDocument ? globalFunction('fetch') : undefined;
export const dispatch = method(EventTarget.prototype, 'dispatchEvent');

const encode = method(TextEncoder.prototype, 'encode');
const encoder = new TextEncoder();
export const encodeText = (text) => encode(encoder, text);
const decode = method(TextDecoder.prototype, 'decode');
const decoder = new TextDecoder();
export const decodeText = (bytes) => decode(decoder, bytes);
export const indexOfByte = method(Uint8Array.prototype, 'indexOf');

// Of a message on its way to the server: a text, or bytes. The usual ones are short, and not looked
// at.
export const isLongerThan = (message, bytes) =>
  message.length * 3 > bytes &&
  (typeof message === 'string' ? encodeText(message) : message).length > bytes;

const makeObserver = inDocument && ((receive) => construct(MutationObserver, [receive]));
const observe = inDocument && method(MutationObserver.prototype, 'observe');
// Calls `receive(records)` for as long as the root is there.
export const observeTree = (root, options, receive) =>
  observe(makeObserver(receive), root, options);
export const getAttribute = inDocument && method(Element.prototype, 'getAttribute');
export const setAttribute = inDocument && method(Element.prototype, 'setAttribute');

// Text as it can be sent: a half of a surrogate pair alone becomes U+FFFD, as on the way to any
// native code.
const makeWellFormed = String.prototype.toWellFormed;
export function wellFormed(value) {
  const text = `${value}`;
  return makeWellFormed ? apply(makeWellFormed, text, []) : text;
}
