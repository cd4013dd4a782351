// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/json_fields.h"
#include "server/records/event_broadcast.h"
#include "server/records/record_ring.h"

namespace orvane::server {

// One message between a page and an extension or the runtime, with its answer.
struct TraceRecord {
  int64_t time_ns = 0;
  int64_t context = 0;
  std::string direction;  // "fromPage" or "toPage"
  std::string kind;
  std::string peer;  // whom it concerns: an extension, an address, a privilege
  Json payload;      // bytes are written as base64
  std::optional<Json> reply;
  std::optional<std::string> error;
  std::optional<int64_t> microseconds;
};
template <class Map>
void MapFields(Map& map, TraceRecord& record) {
  map("time_ns", record.time_ns);
  map("context", record.context);
  map("direction", record.direction);
  map("kind", record.kind);
  map("peer", record.peer);
  map("payload", record.payload);
  map.Optional("reply", record.reply);
  map.Optional("error", record.error);
  map.Optional("us", record.microseconds);
}

// What happened, for people who come later: the set's log, the messages, the pages' consoles and
// the explanations. Each is told to the open simulators too. The loop's thread only.
class Journal {
 public:
  explicit Journal(EventBroadcast& events) : events_(events) {}  // borrowed

  void AddTrace(TraceRecord record);
  void AddLog(std::string_view lines);  // each numbered, and with a line's end after it
  void AddConsole(Json entry);          // {"level","text",…}; the time is added
  void AddExplanation(Json entry);      // {"text",…}; the time is added

  RecordRing& log() { return log_; }
  RecordRing& trace() { return trace_; }
  RecordRing& console() { return console_; }
  RecordRing& explanations() { return explanations_; }

 private:
  EventBroadcast& events_;
  RecordRing log_{100000, size_t{128} << 20U};
  RecordRing trace_{50000, size_t{64} << 20U};
  RecordRing console_{5000, size_t{16} << 20U};
  RecordRing explanations_{1000, size_t{4} << 20U};
};

}  // namespace orvane::server
