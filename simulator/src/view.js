// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// How every module of the simulator draws: Preact elements written with htm, state in signals.

import { h } from 'preact';
import htm from 'htm';

export const html = htm.bind(h);
export { Fragment, render } from 'preact';
export { useCallback, useEffect, useLayoutEffect, useMemo, useRef, useState } from 'preact/hooks';
export { batch, computed, effect, signal } from '@preact/signals';
