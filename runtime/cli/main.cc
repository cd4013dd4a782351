// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "base/near_names.h"
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

// Throws CommandError when the first argument is neither an option nor a verb.
void CheckVerb(const CLI::App& command, const std::vector<std::string>& arguments) {
  if (arguments.empty() || arguments[0].empty() || arguments[0][0] == '-') return;
  std::vector<std::string> verbs;
  for (const CLI::App* verb : command.get_subcommands(nullptr)) verbs.push_back(verb->get_name());
  if (std::find(verbs.begin(), verbs.end(), arguments[0]) != verbs.end()) return;
  throw CommandError("there is no verb \"" + arguments[0] + "\"." +
                     base::DidYouMean(base::NearNames(arguments[0], verbs)) +
                     " Run orvane --help for those that there are.");
}

// The parser takes "[a,b]" apart and "-1" for an option.
bool NeedsBlank(const std::string& argument) {
  if (argument.empty()) return false;
  const bool negative =
      argument.size() > 1 && argument[0] == '-' && argument[1] >= '0' && argument[1] <= '9';
  return negative || argument[0] == '[';
}

// The command line's arguments (without the command's name) as the parser wants them: last first,
// and those of "call" and "fail" that it would read as something else than a value (a list, a
// negative number) with a blank before them, which JSON and numbers allow.
std::vector<std::string> ParserOrder(std::vector<std::string> arguments) {
  const bool takes_json = !arguments.empty() && arguments.front() == "call";
  const bool takes_code = !arguments.empty() && arguments.front() == "fail";
  if (takes_json || takes_code) {
    for (std::string& argument : arguments) {
      if (NeedsBlank(argument)) argument.insert(0, 1, ' ');
    }
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
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
  for (const auto add :
       {AddRunVerb, AddExecVerb, AddCallVerb, AddGetVerb, AddSetVerb, AddReplayVerb, AddKeyVerb,
        AddLogVerb, AddScreenshotVerb, AddFailVerb, AddAppsVerb, AddSetProcessVerb}) {
    add(command, run);
  }
  command.failure_message(FailureMessage);
  try {
    CheckVerb(command, arguments);
    if (arguments.empty()) throw CLI::CallForHelp();
    command.parse(ParserOrder(arguments));
    return static_cast<int>(run());
  } catch (const CLI::ParseError& error) {
    // Help and version come this way too.
    return command.exit(error) == 0 ? 0 : static_cast<int>(ExitCode::kUsage);
  } catch (const CommandError& error) {
    Complain(error.what());
    return static_cast<int>(error.exit_code());
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
