// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "process/child_process.h"
#include "server/json_object.h"

namespace boost::asio {
class io_context;
}

namespace orvane::server {

// What comes of a request to the library process. The texts live for the call.
struct LibraryAnswer {
  std::string_view result;    // JSON; empty when there is none
  std::string_view error;     // a JSON string: the library process refused
  std::string failure;        // the rest of a sentence: why nobody answered at all
  int64_t microseconds = -1;  // in the library process, as far as it told

  bool ok() const { return !result.empty(); }
};

// Learns what the library process says of its own accord. Called on the loop's thread; the texts
// live for the call.
class LibraryListener {
 public:
  virtual ~LibraryListener() = default;
  // Once, with the first start; `started` is the process's own frame.
  virtual void OnStarted(const JsonObject& started) = 0;
  virtual void OnStartFailed(const std::string& why) = 0;
  // `extension` and `text` are JSON strings.
  virtual void OnPosted(int64_t context, std::string_view extension, std::string_view text) = 0;
  virtual void OnEvent(std::string_view name, std::string_view data) = 0;
  // Its instances are gone.
  virtual void OnRestarted() = 0;
  virtual void OnProcessChanged() = 0;
};

struct LibraryOptions {
  std::vector<std::string> command;  // the process; its socket is descriptor 3
  std::string start_options;         // JSON
  std::chrono::milliseconds deadline{10000};
  // A message that is still being handled so long after its deadline costs the process its life; so
  // does a start that takes as long as both.
  std::chrono::milliseconds patience{20000};
};

// The library process: starts it, talks to it, and starts it again when it dies, with the state of
// the set that it told last. Every request is answered once, whatever becomes of the process,
// unless this object is destroyed first. The loop's thread only.
class Library {
 public:
  using Receiver = std::function<void(const LibraryAnswer&)>;

  // Borrows both.
  Library(boost::asio::io_context& loop, LibraryListener& listener, LibraryOptions options);
  ~Library();
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  void Start();

  // `members` is what the frame holds besides its operation and its number: `"a":1,"b":2`.
  void Request(std::string_view operation, std::string_view members, Receiver receiver);
  void Post(std::string_view operation, std::string_view members);

  // Asks the process to end, and ends it if it does not within a moment; then calls `stopped`.
  void Stop(std::function<void()> stopped);
  // Starts it again, also when it died too often.
  void Restart();

  size_t queued_bytes() const;  // for the process, which has not taken them yet

  pid_t pid() const;         // 0: there is none
  std::string Json() const;  // state, pid and deaths, for people

 private:
  enum class State { kStarting, kRunning, kDown, kStopping };
  using TimePoint = std::chrono::steady_clock::time_point;
  struct Pending {
    Receiver receiver;  // empty once it was told that the deadline has passed
    TimePoint deadline;
  };
  // One run of the process, with what belongs to it.
  struct Process;

  void Spawn();
  void Send(std::string_view body);
  void OnFrame(std::string_view body);
  void OnAnswer(const JsonObject& frame);
  void OnProcessStarted(const JsonObject& frame);
  void OnProcessFailed(const JsonObject& frame);
  void OnClosed();
  void Reap(TimePoint kill_at);
  void OnDeath(const process::ProcessEnd& end);
  bool DiesTooOften() const;
  void GoDown(const std::string& why);
  void FailPending(const std::string& why);
  void WatchDeadlines();
  void CheckDeadlines();
  void EndStuckStart(TimePoint now);
  bool IsStuck(const Pending& pending, TimePoint now) const;
  bool IsHandling() const;
  std::string HandlingJson() const;
  std::string HandlingWords() const;
  std::string EndWords(const process::ProcessEnd& end) const;
  void NoteDeath(const process::ProcessEnd& end, const std::string& stderr_text);

  boost::asio::io_context& loop_;
  LibraryListener& listener_;
  const LibraryOptions options_;
  State state_ = State::kStarting;
  bool was_started_ = false;
  std::shared_ptr<Process> process_;
  std::function<void()> stopped_;

  uint64_t last_id_ = 0;
  std::map<uint64_t, Pending> pending_;
  std::vector<std::string> held_;  // until the process has started
  bool watching_deadlines_ = false;

  std::string snapshot_ = "null";
  std::string handling_;  // the frame that told what the process handles; may be answered already
  bool is_handled_ = false;  // it told that this is done, which gets no answer
  TimePoint spawned_at_;
  TimePoint handling_since_;
  std::string kill_reason_;  // why this side ended the process

  struct Death {
    TimePoint time;
    std::string json;
  };
  std::vector<Death> deaths_;
};

}  // namespace orvane::server
