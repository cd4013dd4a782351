// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

class LineRing;

// What the log takes, as a set's configuration says it. The defaults are those of a set, but for
// one: a fatal line does not end the process, because a desktop session with a debugger and other
// pages in it is worth more than the set's crash report.
struct LogPolicy {
  // False: only the log of applications is open, the others answer -1.
  bool platform_logging = true;
  // False: debug and verbose lines answer -22.
  bool debug_mode = true;
  // True: a fatal line ends the process once it is written.
  bool abort_on_fatal = false;
};

// The set's log: the newest lines, as many as fit into a fixed number of bytes; the oldest go
// first. Owned by Set. Partner of the platform's dlog functions, which write, and of whoever shows
// the log, who reads or observes. Writing allocates nothing, but for observers. It works before the
// set is started and after it stopped; each start drops the lines and goes back to the default
// capacity and policy. Any thread.
class TVSET_EXPORT LogBuffer {
 public:
  // Bytes of text that a line keeps.
  static constexpr size_t kMaxText = 4075;
  // A mebibyte.
  static constexpr size_t kDefaultCapacity = size_t{1} << 20;

  // Borrowed.
  explicit LogBuffer(EventHub& events);
  ~LogBuffer();
  LogBuffer(const LogBuffer&) = delete;
  LogBuffer& operator=(const LogBuffer&) = delete;

  // The rules of the platform's log call: the number of text bytes kept, or -22 for an unknown log
  // or priority, -1 for a log that the policy closes. The line carries this moment, this process
  // and this thread, and is told to Observer::OnLogLine on it.
  int Write(int log_id, int priority, std::string_view tag, std::string_view text);

  // Says why the set refuses or cannot do something: a line of priority "error" with the tag
  // "TVSET", then Observer::OnRefusal. `text` is one sentence without its full stop.
  void WriteRefusal(const std::string& text);

  // 0 when Write would take the line, else its answer. Cheap, with no lock: asked before the text
  // of a line is made, which is what a line costs most.
  int Admit(int log_id, int priority) const;

  // Oldest first.
  std::vector<LogLine> lines() const;
  // Lines since they were last dropped as a whole.
  uint64_t written() const;
  // Of these, how many made room for newer ones.
  uint64_t dropped() const;
  // Drops every line, and counts from nought. Told to nobody: who numbers lines goes on.
  void Clear();

  // Bytes; a line takes its text, its tag and a little more.
  size_t capacity() const;
  // Drops every line, and counts from nought. Takes no less than what the longest line takes.
  void set_capacity(size_t bytes);

  // Which lines are taken from now on; those that are there stay.
  LogPolicy policy() const;
  void set_policy(const LogPolicy& policy);

 private:
  EventHub& events_;
  // The policy, read for each line without the lock.
  std::atomic<bool> platform_logging_{true};
  std::atomic<bool> debug_mode_{true};
  std::atomic<bool> abort_on_fatal_{false};
  mutable std::mutex mutex_;
  // Guarded by mutex_:
  std::unique_ptr<LineRing> ring_;
  uint64_t written_ = 0;
  uint64_t dropped_ = 0;
};

}  // namespace tvset
