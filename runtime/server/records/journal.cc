// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/records/journal.h"

#include <algorithm>
#include <utility>

#include "base/wall_clock.h"

namespace orvane::server {

void Journal::AddTrace(TraceRecord record) {
  events_.PublishItem("trace", trace_.Add(std::move(record)));
}

void Journal::AddLog(std::string_view lines) {
  while (!lines.empty()) {
    const size_t end = std::min(lines.find('\n'), lines.size());
    events_.PublishItem("log", log_.AddNumbered(lines.substr(0, end)));
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
}

void Journal::AddConsole(Json entry) {
  entry["time_ns"] = base::NowNs();
  events_.PublishText("console", console_.Add(std::move(entry)));
}

void Journal::AddExplanation(Json entry) {
  entry["time_ns"] = base::NowNs();
  events_.PublishText("explain", explanations_.Add(std::move(entry)));
}

}  // namespace orvane::server
