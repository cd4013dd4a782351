// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/child_process.h"
#include "base/json_object.h"
#include "set_process/handled_message.h"
#include "set_process/pending_requests.h"
#include "set_process/process_deaths.h"

namespace boost::asio {
class io_context;
}

namespace orvane::set_process {

class SpawnedProcess;

// What the library posts to a page. JSON strings; `text` is base64 for a message of bytes.
struct PostedText {
  std::string_view extension;
  std::string_view text;
  bool is_binary = false;
};

// Learns what the set process says of its own accord. Called on the loop's thread; the texts
// live for the call.
class SetProcessListener {
 public:
  virtual ~SetProcessListener() = default;
  // Once, with the first start; `started` is the process's own frame.
  virtual void OnStarted(const base::JsonObject& started) = 0;
  virtual void OnStartFailed(const std::string& why) = 0;
  virtual void OnPosted(int64_t context, const PostedText& posted) = 0;
  virtual void OnEvent(std::string_view name, std::string_view data) = 0;
  // Its instances are gone.
  virtual void OnRestarted() = 0;
  virtual void OnProcessChanged() = 0;
};

struct SetProcessOptions {
  std::vector<std::string> command;  // the process; its socket is descriptor 3
  std::string start_options;         // JSON
  std::chrono::milliseconds deadline{10000};
  // A message that is still being handled so long after its deadline costs the process its life; so
  // does a start that takes as long as both.
  std::chrono::milliseconds patience{20000};
};

// The set process: starts it, talks to it, and starts it again when it dies, with the state of
// the set that it told last. Every request is answered once, whatever becomes of the process,
// unless this object is destroyed first. The loop's thread only.
class SetProcess {
 public:
  using Receiver = PendingRequests::Receiver;

  // Borrows both.
  SetProcess(boost::asio::io_context& loop, SetProcessListener& listener,
             SetProcessOptions options);
  ~SetProcess();
  SetProcess(const SetProcess&) = delete;
  SetProcess& operator=(const SetProcess&) = delete;

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
  std::string Json() const;  // state, pid, what it handles, and deaths, for people

 private:
  enum class State { kStarting, kRunning, kDown, kStopping };
  using TimePoint = std::chrono::steady_clock::time_point;

  void Spawn();
  void StartProcess();
  void Send(std::string_view body);
  void OnFrame(std::string_view body);
  void OnAnswer(const base::JsonObject& frame);
  void OnProcessStarted(const base::JsonObject& frame);
  void OnProcessFailed(const base::JsonObject& frame);
  void OnEnd(const base::ProcessEnd& end, const std::string& output);
  void GoDown(const std::string& why);
  void WatchDeadlines();
  void CheckDeadlines();
  void EndStuckProcess(TimePoint now);
  void Kill(const std::string& reason);
  bool IsHandling() const;
  std::string EndWords(const base::ProcessEnd& end) const;

  boost::asio::io_context& loop_;
  SetProcessListener& listener_;
  const SetProcessOptions options_;
  State state_ = State::kStarting;
  bool was_started_ = false;
  std::shared_ptr<SpawnedProcess> child_;
  std::function<void()> stopped_;

  PendingRequests pending_;
  std::vector<std::string> held_;  // until the process has started
  bool watching_deadlines_ = false;

  std::string snapshot_ = "null";
  HandledMessage handled_;
  TimePoint spawned_at_;
  std::string kill_reason_;  // why this side ended the process

  ProcessDeaths deaths_;
};

}  // namespace orvane::set_process
