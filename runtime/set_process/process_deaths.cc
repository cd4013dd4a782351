// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/process_deaths.h"

#include <cstddef>
#include <utility>

#include "base/wall_clock.h"

namespace orvane::set_process {

namespace {

constexpr size_t kMany = 3;
constexpr std::chrono::seconds kShortTime{5};
constexpr size_t kKept = 20;

}  // namespace

void ProcessDeaths::Add(const base::ProcessEnd& end, const std::string& reason, const Json& handled,
                        const std::string& output) {
  Json death{{"time_ns", base::NowNs()}, {"signal", end.signal}, {"exit", end.exit_code},
             {"reason", reason},         {"handling", handled},  {"stderr", output}};
  if (deaths_.size() == kKept) deaths_.erase(deaths_.begin());
  deaths_.push_back({std::chrono::steady_clock::now(), std::move(death)});
}

bool ProcessDeaths::AreTooMany() const {
  return deaths_.size() >= kMany &&
         deaths_.back().time - deaths_[deaths_.size() - kMany].time < kShortTime;
}

Json ProcessDeaths::List() const {
  Json list = Json::array();
  for (const Death& death : deaths_) list.push_back(death.description);
  return list;
}

}  // namespace orvane::set_process
