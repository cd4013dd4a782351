// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The line between two areas, moved with the pointer or the arrow keys. The area after it is the
// one whose size is `value`, in pixels.

import { html, useRef } from '../view.js';

const step = 20;

/** @param {{label: string, axis: 'x' | 'y', value: number, range: [number, number],
 *           onChange: (value: number) => void}} props */
export function Splitter({ label, axis, value, range: [least, most], onChange }) {
  const start = useRef(null);
  const at = (event) => (axis === 'x' ? event.clientX : event.clientY);
  const change = (next) => onChange(Math.round(Math.max(least, Math.min(most, next))));
  const onPointerDown = (event) => {
    start.current = { at: at(event), value };
    event.currentTarget.setPointerCapture(event.pointerId);
    event.preventDefault();
  };
  const onPointerMove = (event) => {
    if (start.current) {
      change(start.current.value - (at(event) - start.current.at));
    }
  };
  const onPointerUp = () => (start.current = null);
  const onKeyDown = (event) => {
    const [more, less] = axis === 'x' ? ['ArrowLeft', 'ArrowRight'] : ['ArrowUp', 'ArrowDown'];
    if (event.key === more || event.key === less) {
      event.preventDefault();
      change(value + (event.key === more ? step : -step));
    }
  };
  return html`<div
    class=${`splitter splitter-${axis}`}
    role="separator"
    tabindex="0"
    aria-label=${label}
    aria-orientation=${axis === 'x' ? 'vertical' : 'horizontal'}
    aria-valuenow=${value}
    aria-valuemin=${least}
    aria-valuemax=${most}
    onPointerDown=${onPointerDown}
    onPointerMove=${onPointerMove}
    onPointerUp=${onPointerUp}
    onPointerCancel=${onPointerUp}
    onKeyDown=${onKeyDown}
  ></div>`;
}
