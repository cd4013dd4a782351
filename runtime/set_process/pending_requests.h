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

namespace orvane::set_process {

// What comes of a request to the set process. The texts live for the call.
struct SetProcessAnswer {
  std::string_view result;    // JSON; empty when there is none
  std::string_view error;     // a JSON string: the set process refused
  std::string failure;        // the rest of a sentence: why nobody answered at all
  int64_t microseconds = -1;  // in the set process, as far as it told

  bool ok() const { return !result.empty(); }
};

// The requests that are under way, by number. Each receiver is called once, or is given away. One
// thread.
class PendingRequests {
 public:
  using Receiver = std::function<void(const SetProcessAnswer&)>;
  using TimePoint = std::chrono::steady_clock::time_point;

  // Deadlines never get earlier from one request to the next.
  uint64_t Add(Receiver receiver, TimePoint deadline);
  bool Has(uint64_t id) const { return pending_.count(id) != 0; }
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
