// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "base/json.h"
#include "server/simulator/run_options.h"

namespace orvane::server {

// What is told about a run.

// The "options" of the set process's start.
Json StartOptions(const RunOptions& options);
// What the page's runtime has to know: id, name and version.
Json PageAppInfo(const app::WebApplication& app);
Json AppInfo(const app::WebApplication& app);
// The path of the start page, with its query: "/index.html".
std::string StartPath(const RunOptions& options);
// The answer of run.info.
Json RunInfo(const RunOptions& options, const RunAddresses& addresses, const std::string& profile,
             int64_t started_ns);

}  // namespace orvane::server
