// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/start_options.h"

#include <limits>

#include "television/fault_text.h"

namespace orvane::television {

namespace {

std::vector<std::string> Texts(const Fields& fields, const std::string& name) {
  std::vector<std::string> texts;
  for (const picojson::value& value : fields.Array(name)) {
    if (!value.is<std::string>()) fields.Refuse(name, "an array of strings");
    texts.push_back(value.get<std::string>());
  }
  return texts;
}

}  // namespace

StartOptions ReadStartOptions(const Fields& fields) {
  constexpr int64_t kLongestDeadline = 24LL * 60 * 60 * 1000;
  StartOptions options;
  options.state_folder = fields.Text("state", "");
  options.profile = fields.Text("profile", "");
  options.app = ReadApplication(fields.Object("app"));
  options.pid = static_cast<pid_t>(fields.Integer("pid", 0, std::numeric_limits<pid_t>::max(), 0));
  for (const std::string& text : Texts(fields, "faults")) {
    options.faults.push_back(ParseFault(text));
  }
  options.extensions = Texts(fields, "extensions");
  options.deadline = std::chrono::milliseconds(
      fields.Integer("deadlineMs", 1, kLongestDeadline, options.deadline.count()));
  options.test_hooks = fields.Flag("testHooks", false);
  return options;
}

}  // namespace orvane::television
