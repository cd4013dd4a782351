// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/set_options.h"

#include <cmath>
#include <cstdint>

#include "tvset/paths.h"

namespace orvane::cli {

CLI::Option* Repeatable(CLI::Option* option) {
  return option->expected(1)->take_all()->allow_extra_args(false);
}

void AddSetOptions(CLI::App& verb, television::TelevisionOptions& set,
                   const SetDefaults& defaults) {
  verb.add_option(
          "--profile", set.profile,
          std::string("Device: uhd, fhd, or the path of a model-config.xml.\n") + defaults.profile)
      ->type_name("NAME");
  verb.add_option("--state", set.state_folder,
                  std::string("Folder of what the set keeps between runs.\n") + defaults.state)
      ->type_name("DIR");
  Repeatable(verb.add_option("--fail", set.faults,
                             "FUNCTION=CODE makes a platform function fail with that code,\n"
                             "FUNCTION=CODE:once only its next call; repeatable")
                 ->type_name("FAULT"));
  Repeatable(verb.add_option("--extension", set.extensions,
                             "Load this extension, or a folder of them laid out as on a set,\n"
                             "before the project's own; repeatable")
                 ->type_name("PATH"));
}

void AddDeadlineOption(CLI::App& verb, double& seconds, const char* help) {
  constexpr double kLongestSeconds = 3600;
  verb.add_option("--deadline", seconds, help)
      ->type_name("SECONDS")
      ->check(CLI::Range(0.001, kLongestSeconds).description(""));
}

std::filesystem::path StateFolder(const std::string& given) {
  return std::filesystem::absolute(given.empty() ? tvset::Paths::DefaultStateFolder()
                                                 : std::filesystem::path(given));
}

std::chrono::milliseconds Milliseconds(double seconds) {
  return std::chrono::milliseconds(static_cast<int64_t>(std::ceil(seconds * 1000)));
}

}  // namespace orvane::cli
