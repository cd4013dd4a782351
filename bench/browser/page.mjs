// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What runs in the page and speaks its protocol: a commit is measured with its own.

// Makes window.bench: `kinds`, a function for each kind of call, and `acknowledge`. A second page
// context of the same server has a socket of its own for the plain round trips, so that the page's
// own is left alone.
export async function prepare() {
  const script = await (await fetch('/.orvane/page.js')).text();
  const [, token] = /"token":"([^"]+)"/.exec(script);
  const [, context] = /"context":(\d+)/.exec(script);
  const query = `?token=${token}&context=${context}`;
  const getAppState = '{"cmd":"OrvaneManager_getAppState","args":{"appid":""}}';
  const request = { type: 'sync', extension: 'dravelt.orvane' };
  let id = 0;
  const next = (head, body) => {
    id += 1;
    const line = JSON.stringify({ ...head, id });
    return body === undefined ? line : `${line}\n${body}`;
  };

  const socket = new WebSocket(`ws://${location.host}/.orvane/socket${query}&last=0`);
  let answered = null;
  let last = 0;
  await new Promise((resolve, reject) => {
    socket.onmessage = ({ data }) => {
      const { type, seq } = JSON.parse(data.split('\n')[0]);
      if (type === 'hello') {
        resolve();
      } else {
        last = seq;
        answered();
      }
    };
    socket.onerror = () => reject(new Error('the second context got no socket'));
  });
  const roundTrip = (head, body) =>
    new Promise((resolve) => {
      answered = resolve;
      socket.send(next(head, body));
    });

  window.bench = {
    acknowledge: () => socket.send(JSON.stringify({ type: 'ack', seq: last })),
    kinds: {
      echo: () => roundTrip({ type: 'echo' }),
      message: () => roundTrip(request, getAppState),
      worker: () => dravelt.orvane.getAppState(),
      request() {
        const call = new XMLHttpRequest();
        call.open('POST', `/.orvane/sync${query}`, false);
        call.send(next(request, getAppState));
        if (call.status !== 200) {
          throw new Error(`the request was refused: ${call.responseText}`);
        }
      },
    },
  };
}
