// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "cli/television_page.h"
#include "cli/verbs/verbs.h"

namespace orvane::cli {

namespace {

struct ExecOptions : PageVerbOptions {
  std::vector<std::string> scripts;
};

ExitCode Exec(const ExecOptions& options) {
  // All are read before the first runs, so that a wrong path is told before anything happens.
  std::vector<std::pair<std::string, std::string>> scripts;
  for (const std::string& path : options.scripts) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
      throw CommandError(path + " is a folder. Name a script; an application goes with --app.");
    }
    scripts.emplace_back(path == "-" ? "<stdin>" : path, ReadInput(path, "script"));
  }
  ConsolePrinter console;
  return TelevisionPage(options, &console).Run(scripts);
}

}  // namespace

void AddExecVerb(CLI::App& command, Run& run) {
  const auto verb = AddVerb<ExecOptions>(command, run, "exec",
                                         "Run scripts in a page, and wait until it is idle", Exec);
  verb.app
      .add_option("SCRIPT", verb.options.scripts,
                  "Run in this order in one page; - is the standard input")
      ->required()
      ->type_name("");
  AddPageVerbOptions(verb.app, verb.options);
  verb.app.footer(
      "The page's console.log goes to the standard output, console.warn and console.error to the\n"
      "standard error stream. Ends with 0, or 1 after an uncaught exception, 2 when something on "
      "the\n"
      "command line cannot be used, 3 at the time limit.\n\n"
      "Example: orvane exec --app examples/tour --log error examples/tour/tour.js");
}

}  // namespace orvane::cli
