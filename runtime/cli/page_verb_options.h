// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/set_options.h"

namespace orvane::cli {

// What the verbs that open a page have in common, as given on the command line.
struct PageVerbOptions : SetOptions {
  std::string app;                       // a folder or a .wgt; empty: the scratch application
  std::vector<std::string> log_filters;  // empty: no log
  std::string log_format = "brief";
  bool trace = false;
  double timeout_seconds = 60;
  double closing_seconds = 10;  // for work of extensions that their instances wait for
};

// Adds the options to a verb. `options` is filled when the command line is parsed, and must live
// until then.
void AddPageVerbOptions(CLI::App& verb, PageVerbOptions& options);

}  // namespace orvane::cli
