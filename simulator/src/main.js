// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Where the page begins.

import './styles/simulator.css';
import { connect } from './api/session.js';
import { takeToken } from './api/token.js';
import { onShortcut } from './remote/shortcuts.js';
import { keepApplicationFocus } from './screen/focus.js';
import { App } from './shell/app.js';
import { html, render } from './view.js';

const room = document.getElementById('simulator');
room.textContent = '';
render(html`<${App} />`, room);
document.addEventListener('keydown', onShortcut);
document.addEventListener('mousedown', keepApplicationFocus);
connect(takeToken());
