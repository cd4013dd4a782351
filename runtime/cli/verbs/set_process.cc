// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/set_options.h"
#include "cli/shipped_parts.h"
#include "cli/verbs/verbs.h"
#include "set_process/child_main.h"

namespace orvane::cli {

namespace {

struct ChildOptions {
  int socket = -1;
  int memory = -1;
  double grace_seconds = 3;
};

ExitCode Serve(const ChildOptions& options) {
  set_process::MessageInHand in_hand{base::UniqueFd(options.memory)};
  return static_cast<ExitCode>(set_process::RunSetProcess(
      options.socket, in_hand, FindShippedParts(), Milliseconds(options.grace_seconds)));
}

}  // namespace

// For the command itself, which starts it beside the server: in no list of verbs.
void AddSetProcessVerb(CLI::App& command, Run& run) {
  const auto verb = AddVerb<ChildOptions>(command, run, "set-process",
                                          "Hold the set and the library for orvane run", Serve);
  verb.app.group("");
  verb.app.add_option("--fd", verb.options.socket, "Descriptor of the socket to the server")
      ->required();
  verb.app
      .add_option("--memory", verb.options.memory,
                  "Descriptor of the memory for the message in hand")
      ->required();
  verb.app.add_option("--grace", verb.options.grace_seconds,
                      "Seconds that a handler may go on for when the server is gone");
}

}  // namespace orvane::cli
