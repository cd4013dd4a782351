// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A list of any length of which only the rows in sight exist. It stays at its end while it is
// there, and where the reader put it otherwise. Arrow keys move the selection.

import { html, useEffect, useLayoutEffect, useRef, useState } from '../view.js';

const spareRows = 8;

function useHeight(element) {
  const [height, setHeight] = useState(0);
  useLayoutEffect(() => {
    const observer = new ResizeObserver(([entry]) => setHeight(entry.contentRect.height));
    observer.observe(element.current);
    return () => observer.disconnect();
  }, []);
  return height;
}

/** Where the selection goes by a key, or null for other keys. */
function moved(key, index, length, page) {
  const steps = { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page };
  if (key === 'Home') {
    return 0;
  }
  if (key === 'End') {
    return length - 1;
  }
  if (!(key in steps)) {
    return null;
  }
  return Math.max(0, Math.min(length - 1, (index < 0 ? length : index) + steps[key]));
}

function Row({ list, at }) {
  const { rows, rowHeight, selected, onSelect, renderRow, rowClass, id } = list;
  const row = rows[at];
  return html`<div
    id=${`${id}-${row.row}`}
    class=${`virtual-row ${rowClass?.(row) ?? ''}`}
    role="option"
    aria-selected=${String(row === selected)}
    aria-posinset=${at + 1}
    aria-setsize=${rows.length}
    style=${{ top: `${at * rowHeight}px`, height: `${rowHeight}px` }}
    onClick=${() => onSelect(row === selected ? null : row)}
  >
    ${renderRow(row)}
  </div>`;
}

/**
 * @param {{rows: any[], version: number, rowHeight: number, label: string, id: string,
 *          follow: boolean, onFollow: (follow: boolean) => void, selected: any,
 *          onSelect: (row: any) => void, renderRow: (row: any) => any, rowClass?: Function}} props
 *        each row has a unique `row` number; `selected` is one of them or null
 */
export function VirtualList(props) {
  const { rows, rowHeight, follow, onFollow, selected, onSelect } = props;
  const element = useRef(null);
  const height = useHeight(element);
  const [top, setTop] = useState(0);

  useEffect(() => {
    if (follow) {
      element.current.scrollTop = rows.length * rowHeight;
    }
  });

  const first = Math.max(0, Math.floor(top / rowHeight) - spareRows);
  const end = Math.min(rows.length, Math.ceil((top + height) / rowHeight) + spareRows);

  const onScroll = () => {
    if (!element.current) {
      return; // the list has gone since
    }
    const { scrollTop, scrollHeight, clientHeight } = element.current;
    setTop(scrollTop);
    const atEnd = scrollTop + clientHeight >= scrollHeight - rowHeight;
    if (atEnd !== follow) {
      onFollow(atEnd);
    }
  };
  const onKeyDown = (event) => {
    const index = selected ? rows.indexOf(selected) : -1;
    const page = Math.max(1, Math.floor(height / rowHeight) - 1);
    const next = moved(event.key, index, rows.length, page);
    if (event.key === 'Escape' && selected) {
      onSelect(null);
    } else if (next !== null && rows.length > 0) {
      event.preventDefault();
      onSelect(rows[next]);
      reveal(element.current, next * rowHeight, rowHeight);
    }
  };

  return html`<div
    ref=${element}
    class="virtual-list"
    role="listbox"
    tabindex="0"
    aria-label=${props.label}
    aria-activedescendant=${selected ? `${props.id}-${selected.row}` : undefined}
    onScroll=${onScroll}
    onKeyDown=${onKeyDown}
  >
    <div
      class="virtual-space"
      role="presentation"
      style=${{ height: `${rows.length * rowHeight}px` }}
    >
      ${rows
        .slice(first, end)
        .map((row, offset) => html`<${Row} key=${row.row} list=${props} at=${first + offset} />`)}
    </div>
  </div>`;
}

function reveal(element, top, rowHeight) {
  if (top < element.scrollTop) {
    element.scrollTop = top;
  } else if (top + rowHeight > element.scrollTop + element.clientHeight) {
    element.scrollTop = top + rowHeight - element.clientHeight;
  }
}
