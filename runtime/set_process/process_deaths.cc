// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/process_deaths.h"

#include <cstddef>

#include "base/json_writer.h"
#include "base/wall_clock.h"

namespace orvane::set_process {

namespace {

constexpr size_t kMany = 3;
constexpr std::chrono::seconds kShortTime{5};
constexpr size_t kKept = 20;

}  // namespace

void ProcessDeaths::Add(const base::ProcessEnd& end, const std::string& reason,
                        const std::string& handled, const std::string& output) {
  base::JsonWriter json;
  json.Number("time_ns", base::NowNs()).Number("signal", end.signal).Number("exit", end.exit_code);
  json.Text("reason", reason).Raw("handling", handled).Text("stderr", output);
  if (deaths_.size() == kKept) deaths_.erase(deaths_.begin());
  deaths_.push_back({std::chrono::steady_clock::now(), json.Take()});
}

bool ProcessDeaths::AreTooMany() const {
  return deaths_.size() >= kMany &&
         deaths_.back().time - deaths_[deaths_.size() - kMany].time < kShortTime;
}

std::string ProcessDeaths::Json() const {
  return base::JsonArray(deaths_, [](const Death& death) { return death.json; });
}

}  // namespace orvane::set_process
