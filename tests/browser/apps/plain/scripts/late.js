// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Written into the page while it is read, so it runs before what follows there.
/* eslint-disable no-implicit-globals, no-var, no-unused-vars */

var appId = dravelt.orvane.getForegroundAppId();
