// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

#include <CLI/CLI.hpp>

#include "cli/exit_code.h"

namespace orvane::cli {

// Does the work of the verb that was given, once the whole command line has been read.
using Run = std::function<ExitCode()>;

// A verb that is being added to the command. What is added to `app` fills `options`.
template <class Options>
struct Verb {
  CLI::App& app;
  Options& options;
};

// Adds a verb; when it is given, `run` is set to `work` with its options.
template <class Options, class Work>
Verb<Options> AddVerb(CLI::App& command, Run& run, const char* name, const char* help, Work work) {
  const auto options = std::make_shared<Options>();
  CLI::App* const verb = command.add_subcommand(name, help)->group("Verbs");
  verb->callback([options, work, &run] { run = [options, work] { return work(*options); }; });
  return {*verb, *options};
}

// Each adds one verb with its options.
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
