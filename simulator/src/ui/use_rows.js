// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What a panel over a stream of rows keeps: the selection, whether it follows, and a pause.

import { useState } from '../view.js';
import { count } from './format.js';

/** @param {import('../state/rows.js').Rows} stream */
export function useRows(stream) {
  const [selected, setSelected] = useState(null);
  const [follow, setFollow] = useState(true);
  const [frozen, setFrozen] = useState(null);
  const version = stream.version.value;
  const pause = () => {
    setFrozen(frozen ? null : { rows: stream.matching.slice(), total: stream.total });
    setFollow(Boolean(frozen));
  };
  const rows = frozen ? frozen.rows : stream.matching;
  return {
    version,
    rows,
    selected: selected && rows.includes(selected) ? selected : null,
    select: setSelected,
    follow: follow && !frozen,
    setFollow,
    paused: frozen !== null,
    waiting: frozen ? stream.total - frozen.total : 0,
    pause,
  };
}

/** How many rows are shown, of how many; and how many came since the pause. */
export function rowsText({ rows, waiting }, total) {
  const news = waiting > 0 ? `${count(waiting)} new · ` : '';
  return `${news}${count(rows.length)} of ${total}`;
}
