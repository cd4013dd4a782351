// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace orvane::cli {

// What the verbs that open a page have in common, as given on the command line.
struct SessionOptions {
  std::string app;           // a folder or a .wgt; empty: the scratch application
  std::string profile;       // empty: the set's default
  std::string state_folder;  // empty: the set's default
  std::vector<std::string> faults;
  std::vector<std::string> log_filters;  // empty: no log
  std::string log_format = "brief";
  std::vector<std::string> extensions;
  bool trace = false;
  double timeout_seconds = 60;
};

// Adds the options to a verb. `options` is filled when the command line is parsed, and must live
// until then.
void AddSessionOptions(CLI::App& verb, SessionOptions& options);

}  // namespace orvane::cli
