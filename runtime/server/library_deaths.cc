// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/library_deaths.h"

#include <cstddef>

#include "server/json_writer.h"
#include "server/wall_clock.h"

namespace orvane::server {

namespace {

constexpr size_t kMany = 3;
constexpr std::chrono::seconds kShortTime{5};
constexpr size_t kKept = 20;

}  // namespace

void LibraryDeaths::Add(const process::ProcessEnd& end, const std::string& reason,
                        const std::string& handled, const std::string& output) {
  JsonWriter json;
  json.Number("time_ns", NowNs()).Number("signal", end.signal).Number("exit", end.exit_code);
  json.Text("reason", reason).Raw("handling", handled).Text("stderr", output);
  if (deaths_.size() == kKept) deaths_.erase(deaths_.begin());
  deaths_.push_back({std::chrono::steady_clock::now(), json.Take()});
}

bool LibraryDeaths::AreTooMany() const {
  return deaths_.size() >= kMany &&
         deaths_.back().time - deaths_[deaths_.size() - kMany].time < kShortTime;
}

std::string LibraryDeaths::Json() const {
  return JsonArray(deaths_, [](const Death& death) { return death.json; });
}

}  // namespace orvane::server
