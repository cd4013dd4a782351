// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include <CLI/CLI.hpp>

#include "television/television_options.h"

namespace orvane::cli {

// What becomes of a set without --profile and --state, for people; each a sentence.
struct SetDefaults {
  const char* profile = "Without it: $ORVANE_PROFILE, else uhd";
  const char* state =
      "Without it: $ORVANE_STATE, else $XDG_STATE_HOME/orvane,\n"
      "else ~/.local/state/orvane";
};

// Each adds options to a verb. What they fill is filled when the command line is parsed, and must
// live until then. AddSetOptions are those of every verb that starts a set: its profile, its state
// folder, faults and extensions.
void AddSetOptions(CLI::App& verb, television::TelevisionOptions& set,
                   const SetDefaults& defaults = {});
void AddDeadlineOption(CLI::App& verb, double& seconds, const char* help);

// One value each time the option is given, so that what follows it is not taken for another.
CLI::Option* Repeatable(CLI::Option* option);

// Where a set keeps its state, from the root; empty: the default folder.
std::filesystem::path StateFolder(const std::string& given);

std::chrono::milliseconds Milliseconds(double seconds);  // rounded up

}  // namespace orvane::cli
