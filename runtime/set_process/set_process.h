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
#include "base/frame.h"
#include "set_process/pending_requests.h"
#include "set_process/process_history.h"

namespace boost::asio {
class io_context;
}

namespace orvane::set_process {

class SpawnedProcess;

// What an extension posts to a page. Lives for the call.
struct Posted {
  int64_t context = 0;
  std::string extension;
  std::string_view body;  // text in UTF-8, or any bytes
  bool is_binary = false;
};

// Learns what the set process says of its own accord. Called on the loop's thread; what it is given
// lives for the call.
class SetProcessListener {
 public:
  virtual ~SetProcessListener() = default;
  // Once, with the first start: "catalogue", "scripts" and "warnings".
  virtual void OnStarted(const Json& started) = 0;
  virtual void OnStartFailed(const std::string& why) = 0;
  virtual void OnPosted(const Posted& posted) = 0;
  // "log" has its lines as the body, a JSON object each with a line's end after it, and with "seq",
  // their number, one above that of the line before it, as long as this process runs. All others
  // have data.
  virtual void OnEvent(const std::string& name, const Json& data, std::string_view body) = 0;
  // Its instances are gone.
  virtual void OnRestarted() = 0;
  virtual void OnProcessChanged() = 0;
};

struct SetProcessOptions {
  std::vector<std::string> command;  // the process; its socket is descriptor 3
  Json start_options;                // as television::StartOptions
  std::chrono::milliseconds deadline{10000};
  // A message that is still being handled so long after its deadline costs the process its life; so
  // does a start that takes as long as both.
  std::chrono::milliseconds patience{20000};
  std::chrono::milliseconds stop_grace{2500};  // after it was asked to end
  bool restarts = true;                        // it is started again when it dies
};

// The one parent of a set process, of `orvane run` and of `orvane replay` alike: starts it, talks
// to it, and starts it again when it dies, with the state of the set that it told last. Every
// request is answered once, whatever it holds and whatever becomes of the process, unless this
// object is destroyed first. Owns the process. The loop's thread only; nothing throws.
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

  // `head` names the operation as "op", with what that needs; `body` is the text or the bytes of a
  // page's message. A number of its own is added.
  void Request(Json head, std::string_view body, Receiver receiver);
  // For what gets no answer. Lost while there is no process.
  void Post(const Json& head, std::string_view body);

  // Asks the process to end, and ends it if it does not within a moment; then calls `stopped`.
  void Stop(std::function<void()> stopped);
  // Starts it again, also when it died too often.
  void Restart();

  size_t queued_bytes() const;  // for the process, which has not taken them yet

  pid_t pid() const;  // 0: there is none
  // Why there is none and will be none until Restart; empty while there is one.
  const std::string& why_down() const { return why_down_; }
  Json Description() const;  // state, pid, what it handles, and deaths, for people

 private:
  enum class State { kStarting, kRunning, kDown, kStopping };
  using TimePoint = std::chrono::steady_clock::time_point;

  void Spawn();
  void StartProcess();
  void Send(std::string_view frame);
  void OnFrame(const base::Frame& frame);
  void OnAnswer(const base::Frame& frame);
  void OnEvent(const base::Frame& frame);
  void OnProcessStarted(const Json& started);
  void OnProcessFailed(const Json& failed);
  void Explain(const std::string& text);
  void OnEnd(const base::ProcessEnd& end, const std::string& output);
  void GoDown(const std::string& why);
  void LetGo();
  void WatchDeadlines();
  void CheckDeadlines();
  void EndStuckProcess(TimePoint now);
  void Kill(const std::string& reason);

  boost::asio::io_context& loop_;
  SetProcessListener& listener_;
  const SetProcessOptions options_;
  State state_ = State::kStarting;
  bool was_started_ = false;
  std::shared_ptr<SpawnedProcess> child_;
  std::function<void()> stopped_;

  PendingRequests pending_;
  std::string held_;  // frames, until the process has started
  bool watching_deadlines_ = false;

  std::string snapshot_;       // as the process told it; empty: not yet
  int64_t last_log_line_ = 0;  // its number
  ProcessHistory history_;
  TimePoint spawned_at_;
  std::string kill_reason_;  // why this side ended the process
  std::string why_down_;
};

}  // namespace orvane::set_process
