// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/json.h"

namespace orvane::set_process {

// What comes of a request to the set process. Lives for the call.
struct Answer {
  Json head;              // "result", or "error" with a "message": the set process refused
  std::string_view body;  // the reply's text, to a message of a page
  std::string failure;    // the rest of a sentence: why nobody answered at all

  bool ok() const { return failure.empty() && !head.contains("error"); }
  Json result() const;           // null where the answer is the body
  std::string error() const;     // why it refused, for people; empty when it did not
  int64_t microseconds() const;  // in the set process; -1: it did not tell
};

// The requests that are under way, by number. Each receiver is called once, or is given away.
// Belongs to SetProcess. One thread.
class PendingRequests {
 public:
  using Receiver = std::function<void(const Answer&)>;
  using TimePoint = std::chrono::steady_clock::time_point;

  // Deadlines never get earlier from one request to the next.
  uint64_t Add(Receiver receiver, TimePoint deadline);
  uint64_t next_id() const { return last_id_ + 1; }  // that Add will give
  bool empty() const { return pending_.empty(); }

  // The receiver of an answer that has come; an empty one if its deadline has passed; nothing for a
  // request that is not known.
  std::optional<Receiver> Take(uint64_t id);
  // Those whose deadline has passed since the last time. Their requests stay, without a receiver.
  std::vector<Receiver> TakeLate(TimePoint now);
  // The deadline of the oldest request, whether it has passed or not.
  std::optional<TimePoint> oldest_deadline() const;
  void FailAll(const std::string& why);

 private:
  struct Pending {
    Receiver receiver;
    TimePoint deadline;
  };

  std::map<uint64_t, Pending> pending_;
  uint64_t last_id_ = 0;
};

}  // namespace orvane::set_process
