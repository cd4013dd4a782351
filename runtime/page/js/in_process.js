// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A page without a browser: the build makes this and what it imports one function of `host`.

import { startPage } from './main.js';

startPage(host);
