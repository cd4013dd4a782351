// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/web_application.h"
#include "cli/output.h"
#include "cli/set_options.h"
#include "cli/shipped_parts.h"
#include "cli/simulator.h"
#include "cli/verbs/verbs.h"
#include "page/script_error.h"
#include "server/application/dev_server_address.h"
#include "server/run_server.h"

namespace orvane::cli {

namespace fs = std::filesystem;

namespace {

// What is given, in the options of the server where these are the same.
struct RunVerbOptions {
  server::RunOptions server;
  std::string app;
  double deadline_seconds = 10;
  std::optional<bool> watch;
  bool no_open = false;
  bool no_isolation = false;
};

fs::path FindApp(const RunVerbOptions& options) {
  if (!options.app.empty()) return options.app;
  fs::path tour = FindTour();
  if (!tour.empty()) return tour;
  throw CommandError(
      "name an application, a folder with config.xml or a .wgt: orvane run my-app. (The tour that "
      "is shown without one is not installed.)");
}

server::RunOptions ServerOptions(const RunVerbOptions& given) {
  server::RunOptions options = given.server;
  options.set.state_folder = StateFolder(options.set.state_folder);
  const fs::path app = FindApp(given);
  options.app = app::Load(app, fs::path(options.set.state_folder) / "unpacked");
  options.version = ORVANE_VERSION;
  options.set_process_command = SetProcessCommand();
  if (options.dev_server.empty()) {
    options.dev_server = server::DevServerOfContent(options.app.content);
  }
  options.deadline = Milliseconds(given.deadline_seconds);
  options.watch = given.watch.value_or(fs::is_directory(app));
  options.isolate = !given.no_isolation;
  options.open_browser = !given.no_open && !options.headless_browser;
  options.check_script = page::SyntaxErrorOf;
  return options;
}

void PrintList(const char* title, const std::vector<std::string>& lines) {
  for (size_t i = 0; i < lines.size(); ++i) {
    std::printf("%-13s%s\n", i == 0 ? title : "", lines[i].c_str());
  }
}

void PrintRun(const server::RunOptions& options, const server::RunAddresses& addresses) {
  const app::WebApplication& app = options.app;
  for (const app::Problem& problem : app.warnings) Complain("warning: " + app::Describe(problem));
  const std::string version = app.version.empty() ? "" : " " + app.version;
  PrintList("Application", {app.name + version + " (" + app.id + ")",
                            options.dev_server.empty() ? app.folder.string() : options.dev_server});
  PrintList("Privileges",
            app.privileges.empty() ? std::vector<std::string>{"none"} : app.privileges);
  std::vector<std::string> metadata;
  for (const auto& [key, value] : app.metadata) {
    metadata.push_back(std::string(key).append(" = ").append(value));
  }
  PrintList("Metadata", metadata.empty() ? std::vector<std::string>{"none"} : metadata);
  // One link for a person; whoever opens pages by other means wants both addresses.
  if (!options.open_browser) PrintList("Page", {addresses.app + "/"});
  PrintList("Television", {addresses.simulator});
  std::printf("\nOpen the television's link in a browser. Ctrl-C ends it.\n");
  std::fflush(stdout);
}

void WarnOfAnother(const std::string& state_folder) {
  try {
    const Simulator other(state_folder);
    Complain("warning: a simulator runs on " + state_folder + " already, as process " +
             std::to_string(other.pid()) +
             ". Both share its settings, and other commands reach this one from now on. Give one a "
             "--state of its own.");
  } catch (const NoSimulator&) {
    // as it should be
  }
}

ExitCode RunApp(const RunVerbOptions& given) {
  server::RunOptions options = ServerOptions(given);
  WarnOfAnother(options.set.state_folder);
  options.on_ready = [options](const server::RunAddresses& addresses) {
    PrintRun(options, addresses);
  };
  server::RunServer(std::move(options)).Run();
  return ExitCode::kDone;
}

}  // namespace

void AddRunVerb(CLI::App& command, Run& run) {
  const auto verb = AddVerb<RunVerbOptions>(
      command, run, "run", "Show an application on a television in the browser", RunApp);
  RunVerbOptions& options = verb.options;
  verb.app
      .add_option("APP", options.app,
                  "A folder with config.xml, or a .wgt. Without it: the tour of the library")
      ->type_name("");
  verb.app
      .add_option("--url", options.server.dev_server,
                  "Serve the pages of this development server in place of the\n"
                  "application's files, such as http://localhost:5173")
      ->type_name("URL");
  verb.app
      .add_option("--port", options.server.port,
                  "Port of the application; 0 for any. Without it: 8630, or the\n"
                  "next free one. The simulator has the one after it")
      ->type_name("NUMBER");
  AddSetOptions(verb.app, options.server.set);
  AddDeadlineOption(verb.app, options.deadline_seconds,
                    "A synchronous call fails after so many seconds (default: 10)");
  verb.app.add_flag_function(
      "--watch,!--no-watch", [&options](int64_t count) { options.watch = count > 0; },
      "Reload the page when a file is saved (default for folders), or do not");
  verb.app.add_flag("--no-isolation", options.no_isolation,
                    "Let the page show frames of other sites; synchronous calls are slower then");
  verb.app.add_flag("--no-open", options.no_open,
                    "Do not open a browser, and print the page's own address too");
  verb.app.add_flag("--headless-browser", options.server.headless_browser,
                    "Open the simulator in a Chromium without a window, which ends with\n"
                    "the run");
  verb.app.add_flag("--test-hooks", options.server.set.test_hooks)->group("");
  verb.app.footer(
      "Serves the application and, at an address of its own, the simulated set around it, on this\n"
      "machine only, until Ctrl-C. Ends with 0, or 2 when something cannot be used.\n\n"
      "Example: orvane run examples/tour --profile fhd");
}

}  // namespace orvane::cli
