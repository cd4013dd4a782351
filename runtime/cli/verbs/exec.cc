// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "cli/page_verb_options.h"
#include "cli/television_page.h"
#include "cli/verbs/verbs.h"

namespace orvane::cli {

namespace {

struct ExecOptions {
  PageVerbOptions page;
  std::vector<std::string> scripts;
};

struct Script {
  std::string name;  // in error texts
  std::string source;
};

// "-" is the standard input.
Script ReadScript(const std::string& path) {
  std::ostringstream text;
  if (path == "-") {
    text << std::cin.rdbuf();
    return {"<stdin>", text.str()};
  }
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    throw UsageError(path + " is a folder. Name a script; an application goes with --app.");
  }
  std::ifstream stream(path, std::ios::binary);
  if (!stream) {
    throw UsageError(path + ": there is no such script, or it may not be read. Check the path.");
  }
  text << stream.rdbuf();
  return {path, text.str()};
}

// All are read before the first runs, so that a wrong path is told before anything happens.
std::vector<Script> ReadScripts(const std::vector<std::string>& paths) {
  std::vector<Script> scripts;
  scripts.reserve(paths.size());
  for (const std::string& path : paths) scripts.push_back(ReadScript(path));
  return scripts;
}

ExitCode Exec(const ExecOptions& options) {
  const std::vector<Script> scripts = ReadScripts(options.scripts);
  ConsolePrinter console;
  TelevisionPage page(options.page, &console);
  for (const Script& script : scripts) {
    if (const auto error = page.page().Evaluate(script.source, script.name)) {
      page.errors().OnScriptError(*error);
      return ExitCode::kScriptError;
    }
  }
  const bool idle = page.RunUntilIdle();
  if (page.errors().count() > 0) return ExitCode::kScriptError;
  return idle ? ExitCode::kDone : ExitCode::kTimeLimit;
}

}  // namespace

void AddExecVerb(CLI::App& command, Run& run) {
  CLI::App* verb =
      command.add_subcommand("exec", "Run scripts in a page, and wait until it is idle");
  verb->group("Verbs");
  const auto options = std::make_shared<ExecOptions>();
  verb->add_option("SCRIPT", options->scripts,
                   "Run in this order in one page; - is the standard input")
      ->required()
      ->type_name("");
  AddPageVerbOptions(*verb, options->page);
  verb->footer(
      "The page's console.log goes to the standard output, console.warn and console.error to the\n"
      "standard error stream. Ends with 0, or 1 after an uncaught exception, 2 when something on "
      "the\n"
      "command line cannot be used, 3 at the time limit.\n\n"
      "Example: orvane exec --app examples/tour --log error examples/tour/tour.js");
  verb->callback([&run, options] { run = [options] { return Exec(*options); }; });
}

}  // namespace orvane::cli
