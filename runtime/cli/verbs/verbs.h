// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include <CLI/CLI.hpp>

#include "cli/exit_code.h"

namespace orvane::cli {

// Each function adds one verb with its options; when the verb was given, `run` is set to what does
// its work once the whole command line has been read.
using Run = std::function<ExitCode()>;

void AddExecVerb(CLI::App& command, Run& run);
void AddCallVerb(CLI::App& command, Run& run);
void AddGetVerb(CLI::App& command, Run& run);
void AddSetVerb(CLI::App& command, Run& run);
void AddKeyVerb(CLI::App& command, Run& run);
void AddLogVerb(CLI::App& command, Run& run);
void AddScreenshotVerb(CLI::App& command, Run& run);
void AddFailVerb(CLI::App& command, Run& run);
void AddAppsVerb(CLI::App& command, Run& run);
void AddRunVerb(CLI::App& command, Run& run);
void AddReplayVerb(CLI::App& command, Run& run);
void AddSetProcessVerb(CLI::App& command, Run& run);

}  // namespace orvane::cli
