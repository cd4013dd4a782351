// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/session_options.h"

namespace orvane::cli {

namespace {

constexpr double kLongestSeconds = 1000000;

// One value each time the option is given, so that what follows it is not taken for another.
CLI::Option* Repeatable(CLI::Option* option) {
  return option->expected(1)->take_all()->allow_extra_args(false);
}

}  // namespace

void AddSessionOptions(CLI::App& verb, SessionOptions& options) {
  verb.add_option("--app", options.app,
                  "Application: a folder with config.xml, or a .wgt.\n"
                  "Without it: a scratch application, which may register keys")
      ->type_name("DIR_OR_WGT");
  verb.add_option("--profile", options.profile,
                  "Device: uhd, fhd, or the path of a model-config.xml.\n"
                  "Without it: $ORVANE_PROFILE, else uhd")
      ->type_name("NAME");
  verb.add_option("--state", options.state_folder,
                  "Folder of what the set keeps between runs.\n"
                  "Without it: $ORVANE_STATE, else $XDG_STATE_HOME/orvane,\n"
                  "else ~/.local/state/orvane")
      ->type_name("DIR");
  Repeatable(verb.add_option("--fail", options.faults,
                             "FUNCTION=CODE makes a platform function fail with that code,\n"
                             "FUNCTION=CODE:once only its next call; repeatable")
                 ->type_name("FAULT"));
  verb.add_flag("--trace", options.trace,
                "Print each message between page, library and runtime, with\n"
                "direction, content and microseconds, on the standard error stream");
  Repeatable(verb.add_option("--log", options.log_filters,
                             "Print the set's log there too: debug, info, warn or error, or\n"
                             "filters as TAG:LETTER, such as QM_WEBAPI:D,*:E; repeatable")
                 ->type_name("FILTERS"));
  verb.add_option("--log-format", options.log_format,
                  "brief (the default), tag, process, thread, raw, time, threadtime,\n"
                  "kerneltime or long")
      ->type_name("NAME");
  Repeatable(verb.add_option("--extension", options.extensions,
                             "Load this extension, or a folder of them laid out as on a set,\n"
                             "before the project's own; repeatable")
                 ->type_name("PATH"));
  verb.add_option("--timeout", options.timeout_seconds,
                  "End a page that is still busy after so many seconds (default: 60)")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.001, kLongestSeconds).description(""));
}

}  // namespace orvane::cli
