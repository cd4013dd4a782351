// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
import './styles/simulator.css';
import { html, render } from './view.js';

render(html`<p class="boot">Starting the simulator…</p>`, document.getElementById('simulator'));
