// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace orvane::cli {

// What the verbs that start a set have in common, as given on the command line.
struct SetOptions {
  std::string profile;       // empty: the set's default
  std::string state_folder;  // empty: the set's default
  std::vector<std::string> faults;
  std::vector<std::string> extensions;
};

// What becomes of a set without --profile and --state, for people; each a sentence.
struct SetDefaults {
  const char* profile = "Without it: $ORVANE_PROFILE, else uhd";
  const char* state =
      "Without it: $ORVANE_STATE, else $XDG_STATE_HOME/orvane,\n"
      "else ~/.local/state/orvane";
};

// Each adds options to a verb. What they fill is filled when the command line is parsed, and must
// live until then.
void AddSetOptions(CLI::App& verb, SetOptions& options, const SetDefaults& defaults = {});
void AddDeadlineOption(CLI::App& verb, double& seconds, const char* help);

// One value each time the option is given, so that what follows it is not taken for another.
CLI::Option* Repeatable(CLI::Option* option);

// Where the set keeps its state, whether it was named or not.
std::filesystem::path StateFolder(const SetOptions& options);

// From the working folder. Throws UsageError for an empty path, which --extension cannot mean.
std::vector<std::string> AbsoluteExtensions(const std::vector<std::string>& paths);

std::chrono::milliseconds Milliseconds(double seconds);  // rounded up

}  // namespace orvane::cli
