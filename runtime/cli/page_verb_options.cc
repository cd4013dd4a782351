// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/page_verb_options.h"

namespace orvane::cli {

void AddPageVerbOptions(CLI::App& verb, PageVerbOptions& options) {
  constexpr double kLongestSeconds = 1000000;
  verb.add_option("--app", options.app,
                  "Application: a folder with config.xml, or a .wgt.\n"
                  "Without it: a scratch application, which may register keys")
      ->type_name("DIR_OR_WGT");
  AddSetOptions(verb, options);
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
  verb.add_option("--timeout", options.timeout_seconds,
                  "End a page that is still busy after so many seconds (default: 60)")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.001, kLongestSeconds).description(""));
  // For tests: in no list of options.
  verb.add_option("--closing", options.closing_seconds)->group("");
}

}  // namespace orvane::cli
