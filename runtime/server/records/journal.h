// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "server/records/event_hub.h"
#include "server/records/record_ring.h"
#include "server/simulator/api.h"

namespace orvane::server {

// One message between a page and the library or the runtime, with its answer. JSON unless it says
// otherwise.
struct TraceRecord {
  int64_t context = 0;
  std::string_view direction;  // a plain word, as `kind`
  std::string_view kind;
  std::string_view peer;
  std::string_view payload;
  std::string_view reply;  // empty: there is none
  std::string_view error;  // empty: there is none
  int64_t microseconds = -1;
  int64_t time_ns = 0;
};

// What happened, for people who come later: the set's log, the messages, the pages' consoles and
// the explanations. Each is told to the open simulators too. The loop's thread only.
class Journal {
 public:
  explicit Journal(EventHub& hub) : hub_(hub) {}

  void AddTrace(const TraceRecord& record);
  void AddLog(std::string_view lines);  // each numbered, and with a line's end after it
  // `members`: {"level","text",…} without the braces; the time is added.
  void AddConsole(const std::string& members);
  void AddExplanation(const std::string& members);

  // log.…, trace.…, console.… and explain.list. `app` and `profile` are JSON, for the session file.
  void AddMethods(Api& api, const std::string& app, std::function<std::string()> profile);

 private:
  EventHub& hub_;
  RecordRing log_{100000, size_t{128} << 20U};
  RecordRing trace_{50000, size_t{64} << 20U};
  RecordRing console_{5000, size_t{16} << 20U};
  RecordRing explanations_{1000, size_t{4} << 20U};
};

}  // namespace orvane::server
