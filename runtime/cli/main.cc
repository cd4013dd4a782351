// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "base/near_names.h"
#include "cli/arguments.h"
#include "cli/output.h"
#include "cli/verbs/verbs.h"

namespace orvane::cli {
namespace {

// Says what the parser did not like, and where to read more.
std::string FailureMessage(const CLI::App* command, const CLI::Error& error) {
  const auto verbs = command->get_subcommands();
  const std::string verb = verbs.empty() ? "" : " " + verbs.front()->get_name();
  return "orvane: " + std::string(error.what()) + "\nRun orvane" + verb +
         " --help for what there is.\n";
}

// Throws UsageError when the first argument is neither an option nor a verb.
void CheckVerb(const CLI::App& command, const std::vector<std::string>& arguments) {
  if (arguments.empty() || arguments[0].empty() || arguments[0][0] == '-') return;
  std::vector<std::string> verbs;
  for (const CLI::App* verb : command.get_subcommands(nullptr)) verbs.push_back(verb->get_name());
  if (std::find(verbs.begin(), verbs.end(), arguments[0]) != verbs.end()) return;
  throw UsageError("there is no verb \"" + arguments[0] + "\"." +
                   base::DidYouMean(base::NearNames(arguments[0], verbs)) +
                   " Run orvane --help for those that there are.");
}

int Main(const std::vector<std::string>& arguments) {
  CLI::App command("Runs and tests television web applications on a simulated set.", "orvane");
  command.set_version_flag("--version", "orvane " ORVANE_VERSION, "Print the version and exit");
  command.require_subcommand(1);
  command.footer(
      "orvane VERB --help explains a verb and its options.\n\n"
      "Examples:\n"
      "  orvane run my-app\n"
      "  orvane call getVersion\n"
      "  orvane exec --app my-app test.js\n"
      "  echo 'console.log(dravelt.orvane.getUuid())' | orvane exec -");
  command.get_formatter()->column_width(28);
  command.get_formatter()->label("SUBCOMMAND", "VERB");
  Run run;
  AddRunVerb(command, run);
  AddExecVerb(command, run);
  AddCallVerb(command, run);
  AddGetVerb(command, run);
  AddSetVerb(command, run);
  AddReplayVerb(command, run);
  AddKeyVerb(command, run);
  AddLogVerb(command, run);
  AddScreenshotVerb(command, run);
  AddFailVerb(command, run);
  AddAppsVerb(command, run);
  AddSetProcessVerb(command, run);
  command.failure_message(FailureMessage);
  try {
    CheckVerb(command, arguments);
    if (arguments.empty()) throw CLI::CallForHelp();
    command.parse(ParserOrder(arguments));
    return static_cast<int>(run());
  } catch (const CLI::ParseError& error) {
    // Help and version come this way too.
    return command.exit(error) == 0 ? 0 : static_cast<int>(ExitCode::kUsage);
  } catch (const std::exception& error) {
    Complain(error.what());
    return static_cast<int>(ExitCode::kUsage);
  }
}

}  // namespace
}  // namespace orvane::cli

int main(int argc, char** argv) {
  // Both streams often end in one file or terminal: keep their lines in order.
  if (std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ) != 0) return 1;
  return orvane::cli::Main({argv + 1, argv + argc});
}
