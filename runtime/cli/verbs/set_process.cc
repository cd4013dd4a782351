// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>

#include "cli/shipped_parts.h"
#include "cli/verbs/verbs.h"
#include "set_process/child_main.h"

namespace orvane::cli {

namespace {

ExitCode Serve(int socket) {
  return static_cast<ExitCode>(set_process::RunSetProcess(socket, FindShippedParts()));
}

}  // namespace

// For the command itself, which starts it beside the server: in no list of verbs.
void AddSetProcessVerb(CLI::App& command, Run& run) {
  CLI::App* const verb =
      command.add_subcommand("set-process", "Hold the set and the library for orvane run");
  verb->group("");
  const auto socket = std::make_shared<int>(-1);
  verb->add_option("--fd", *socket, "Descriptor of the socket to the server")->required();
  verb->callback([&run, socket] { run = [socket] { return Serve(*socket); }; });
}

}  // namespace orvane::cli
