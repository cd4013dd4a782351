// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Runs under a content policy that forbids inline scripts, evaluation and workers.
window.version = dravelt.orvane.getVersion();
