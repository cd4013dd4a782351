// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/web_application.h"
#include "cli/output.h"
#include "cli/set_options.h"
#include "cli/shipped_parts.h"
#include "cli/simulator.h"
#include "cli/verbs/verbs.h"
#include "page/script_syntax.h"
#include "server/application/dev_server_address.h"
#include "server/run_server.h"

namespace orvane::cli {

namespace fs = std::filesystem;

namespace {

struct RunVerbOptions : SetOptions {
  std::string app;
  std::string url;
  std::optional<uint16_t> port;
  double deadline_seconds = 10;
  bool no_open = false;
  bool no_watch = false;
  bool no_isolation = false;
  bool watch = false;
  bool headless_browser = false;
  bool test_hooks = false;
};

fs::path FindApp(const RunVerbOptions& options) {
  if (!options.app.empty()) return options.app;
  fs::path tour = FindTour();
  if (!tour.empty()) return tour;
  throw UsageError(
      "name an application, a folder with config.xml or a .wgt: orvane run my-app. (The tour that "
      "is shown without one is not installed.)");
}

server::RunOptions ServerOptions(const RunVerbOptions& given) {
  server::RunOptions options;
  options.state_folder = StateFolder(given);
  const fs::path app = FindApp(given);
  options.app = app::Load(app, options.state_folder / "unpacked");
  options.version = ORVANE_VERSION;
  options.set_process_command = {fs::read_symlink("/proc/self/exe").string(), "set-process", "--fd",
                                 "3"};
  options.profile = given.profile;
  options.faults = given.faults;
  options.extensions = AbsoluteExtensions(given.extensions);
  options.dev_server =
      given.url.empty() ? server::DevServerOfContent(options.app.content) : given.url;
  options.port = given.port;
  options.deadline = Milliseconds(given.deadline_seconds);
  options.watch = !given.no_watch && (given.watch || fs::is_directory(app));
  options.isolate = !given.no_isolation;
  options.open_browser = !given.no_open && !given.headless_browser;
  options.headless_browser = given.headless_browser;
  options.test_hooks = given.test_hooks;
  options.check_script = [](const std::string& name, const std::string& script) {
    return page::SyntaxErrorOf(script, name);
  };
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

void WarnOfAnother(const fs::path& state_folder) {
  try {
    const Simulator other(state_folder);
    Complain("warning: a simulator runs on " + state_folder.string() + " already, as process " +
             std::to_string(other.pid()) +
             ". Both share its settings, and other commands reach this one from now on. Give one a "
             "--state of its own.");
  } catch (const NoSimulator&) {
    // as it should be
  }
}

ExitCode RunApp(const RunVerbOptions& given) {
  server::RunOptions options = ServerOptions(given);
  WarnOfAnother(options.state_folder);
  options.on_ready = [options](const server::RunAddresses& addresses) {
    PrintRun(options, addresses);
  };
  server::RunServer(std::move(options)).Run();
  return ExitCode::kDone;
}

void AddOptions(CLI::App& verb, RunVerbOptions& options) {
  verb.add_option("APP", options.app,
                  "A folder with config.xml, or a .wgt. Without it: the tour of the library")
      ->type_name("");
  verb.add_option("--url", options.url,
                  "Serve the pages of this development server in place of the\n"
                  "application's files, such as http://localhost:5173")
      ->type_name("URL");
  verb.add_option("--port", options.port,
                  "Port of the application; 0 for any. Without it: 8630, or the\n"
                  "next free one. The simulator has the one after it")
      ->type_name("NUMBER");
  AddSetOptions(verb, options);
  AddDeadlineOption(verb, options.deadline_seconds,
                    "A synchronous call fails after so many seconds (default: 10)");
  verb.add_flag("--watch,!--no-watch", options.watch,
                "Reload the page when a file is saved (default for folders), or do not");
  verb.add_flag("--no-isolation", options.no_isolation,
                "Let the page show frames of other sites; synchronous calls are slower then");
  verb.add_flag("--no-open", options.no_open,
                "Do not open a browser, and print the page's own address too");
  verb.add_flag("--headless-browser", options.headless_browser,
                "Open the simulator in a Chromium without a window, which ends with\n"
                "the run");
  verb.add_flag("--test-hooks", options.test_hooks)->group("");
}

}  // namespace

void AddRunVerb(CLI::App& command, Run& run) {
  CLI::App* const verb =
      command.add_subcommand("run", "Show an application on a television in the browser");
  verb->group("Verbs");
  const auto options = std::make_shared<RunVerbOptions>();
  AddOptions(*verb, *options);
  verb->footer(
      "Serves the application and, at an address of its own, the simulated set around it, on this\n"
      "machine only, until Ctrl-C. Ends with 0, or 2 when something cannot be used.\n\n"
      "Example: orvane run examples/tour --profile fhd");
  verb->callback([&run, verb, options] {
    options->no_watch = verb->count("--watch") > 0 && !options->watch;
    run = [options] { return RunApp(*options); };
  });
}

}  // namespace orvane::cli
