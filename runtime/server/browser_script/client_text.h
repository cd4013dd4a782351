// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The texts of which the server makes the scripts that a browser page gets; README.md of this
// folder says how they fit together. Constant, ASCII, ended by a null byte; usable from any thread.
extern "C" {
extern const char kPageClient[];
extern const char kPageClientEnd[];
extern const char kWorkerClient[];
}
