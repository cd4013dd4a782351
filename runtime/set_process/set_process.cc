// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/set_process.h"

#include <system_error>
#include <utility>

#include "base/frame.h"
#include "base/net.h"
#include "set_process/spawned_process.h"

namespace orvane::set_process {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr milliseconds kDeadlineTick{50};
// Of a message; the rest of its frame is short.
constexpr size_t kMostMessageBytes = base::kMaxFrameBytes - 1024;

std::string Seconds(milliseconds time) {
  std::string text = std::to_string(static_cast<double>(time.count()) / 1000);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text + " s";
}

// A whole frame. Throws base::FrameError, the rest of a sentence.
std::string WholeFrame(const Json& head, std::string_view body) {
  const std::string text = base::JsonText(head);
  const size_t bytes = text.size() + body.size();
  if (bytes > kMostMessageBytes) {
    throw base::FrameError("it has " + std::to_string(bytes) +
                           " bytes, and the set process takes at most " +
                           std::to_string(kMostMessageBytes) + "; send less at a time");
  }
  std::string frame;
  base::AppendFrame(text, body, &frame);
  return frame;
}

}  // namespace

SetProcess::SetProcess(asio::io_context& loop, SetProcessListener& listener,
                       SetProcessOptions options)
    : loop_(loop), listener_(listener), options_(std::move(options)) {}

SetProcess::~SetProcess() { LetGo(); }

pid_t SetProcess::pid() const { return child_ ? child_->pid() : 0; }

void SetProcess::Start() { Spawn(); }

void SetProcess::Spawn() {
  state_ = State::kStarting;
  spawned_at_ = steady_clock::now();
  kill_reason_.clear();
  why_down_.clear();
  try {
    history_.BeginRun();
    StartProcess();
  } catch (const std::system_error& error) {
    const std::string why = std::string("the set process cannot be started: ") + error.what();
    if (!was_started_) return listener_.OnStartFailed(why);
    return GoDown(why);
  }
  WatchDeadlines();
}

void SetProcess::StartProcess() {
  child_ = std::make_shared<SpawnedProcess>(
      loop_, options_.command, history_.memory(),
      SpawnedProcess::Receiver{
          [this](const base::Frame& frame) { OnFrame(frame); },
          [this](const base::ProcessEnd& end, const std::string& output) { OnEnd(end, output); }});
  child_->Listen();
  const Json head{
      {"op", "start"}, {"options", options_.start_options}, {"lastLogLine", last_log_line_}};
  std::string frame;
  base::AppendFrame(base::JsonText(head), snapshot_, &frame);
  child_->Send(frame);
}

void SetProcess::Request(Json head, std::string_view body, Receiver receiver) {
  Answer answer;
  if (state_ == State::kDown || state_ == State::kStopping) {
    answer.failure = "the set process is down; restart it in the simulator, or run it again";
    return receiver(answer);
  }
  head["id"] = pending_.next_id();
  try {
    const std::string frame = WholeFrame(head, body);
    pending_.Add(std::move(receiver), steady_clock::now() + options_.deadline);
    WatchDeadlines();
    Send(frame);
  } catch (const base::FrameError& error) {
    answer.failure = error.what();
    receiver(answer);
  }
}

void SetProcess::Post(const Json& head, std::string_view body) {
  if (state_ != State::kStarting && state_ != State::kRunning) return;
  try {
    Send(WholeFrame(head, body));
  } catch (const base::FrameError& error) {
    Explain(std::string("A posted message was dropped: ") + error.what() + ".");
  }
}

void SetProcess::Explain(const std::string& text) {
  listener_.OnEvent("explain", {{"text", text}}, "");
}

void SetProcess::Send(std::string_view frame) {
  if (state_ == State::kStarting) {
    held_.append(frame);
  } else {
    child_->Send(frame);
  }
}

size_t SetProcess::queued_bytes() const {
  return held_.size() + (child_ ? child_->queued_bytes() : 0);
}

void SetProcess::OnFrame(const base::Frame& frame) {
  const std::string operation = frame.head.value("op", "");
  if (operation == "answer") return OnAnswer(frame);
  if (operation == "posted") {
    return listener_.OnPosted({frame.head.value("context", int64_t{0}),
                               frame.head.value("extension", ""), frame.body,
                               frame.head.value("binary", false)});
  }
  if (operation == "event") return OnEvent(frame);
  if (operation == "snapshot") snapshot_ = frame.body;
  if (operation == "started") OnProcessStarted(frame.head);
  if (operation == "failed") OnProcessFailed(frame.head);
}

void SetProcess::OnEvent(const base::Frame& frame) {
  last_log_line_ = frame.head.value("lastLogLine", last_log_line_);
  listener_.OnEvent(frame.head.value("name", ""), frame.head.value("data", Json()), frame.body);
}

void SetProcess::OnAnswer(const base::Frame& frame) {
  const Answer answer{frame.head, frame.body, ""};
  const auto id = frame.head.value("id", uint64_t{0});
  const auto receiver = pending_.Take(id);
  // The answer to a message that wants none: why it was refused.
  if (!receiver && !answer.ok()) Explain(answer.error());
  if (receiver && *receiver) (*receiver)(answer);  // else it comes too late
}

void SetProcess::OnProcessStarted(const Json& started) {
  if (state_ != State::kStarting) return;  // it was told to stop meanwhile
  state_ = State::kRunning;
  child_->Send(std::exchange(held_, {}));
  if (std::exchange(was_started_, true)) {
    listener_.OnProcessChanged();
  } else {
    listener_.OnStarted(started);
  }
}

void SetProcess::OnProcessFailed(const Json& failed) {
  if (state_ != State::kStarting) return;
  const std::string why = Answer{failed, "", ""}.error();
  if (was_started_) return GoDown(why);
  listener_.OnStartFailed(why);
}

void SetProcess::OnEnd(const base::ProcessEnd& end, const std::string& output) {
  if (state_ == State::kStopping) return stopped_ ? std::exchange(stopped_, nullptr)() : void();
  const std::string why = history_.EndRun(end, kill_reason_, output);
  LetGo();
  if (!was_started_) return listener_.OnStartFailed(why);
  if (!options_.restarts || history_.AreDeathsTooMany()) return GoDown(why);
  state_ = State::kStarting;  // a receiver may ask again at once
  pending_.FailAll(why);
  Spawn();
  if (state_ == State::kDown) return;  // and that was told
  listener_.OnRestarted();
  listener_.OnProcessChanged();
}

void SetProcess::LetGo() {
  if (child_) child_->Forget();
  child_.reset();
  held_.clear();
}

void SetProcess::GoDown(const std::string& why) {
  LetGo();
  state_ = State::kDown;
  why_down_ = why;
  pending_.FailAll(why);
  listener_.OnRestarted();
  listener_.OnProcessChanged();
}

void SetProcess::WatchDeadlines() {
  if (std::exchange(watching_deadlines_, true)) return;
  const auto timer = std::make_shared<asio::steady_timer>(loop_, kDeadlineTick);
  timer->async_wait([this, timer](beast::error_code error) {
    if (error) return;
    watching_deadlines_ = false;
    CheckDeadlines();
    if (!pending_.empty() || state_ == State::kStarting) WatchDeadlines();
  });
}

void SetProcess::CheckDeadlines() {
  const TimePoint now = steady_clock::now();
  EndStuckProcess(now);
  Answer answer;
  answer.failure =
      "there was no answer within " + Seconds(options_.deadline) + "; the set process " +
      (history_.is_busy() ? "is busy with " + history_.MessageWords() : "takes no message");
  for (const Receiver& receiver : pending_.TakeLate(now)) receiver(answer);
}

void SetProcess::EndStuckProcess(TimePoint now) {
  if (!kill_reason_.empty()) return;
  const milliseconds patience = options_.deadline + options_.patience;
  // An extension that never returns from its initialisation would keep it from starting for ever.
  if (state_ == State::kStarting && now >= spawned_at_ + patience) {
    return Kill("it was ended because it had not started after " + Seconds(patience));
  }
  // The oldest request waits, whether in its own handler or behind another that does not end.
  const auto deadline = pending_.oldest_deadline();
  if (state_ == State::kRunning && deadline && now >= *deadline + options_.patience &&
      now >= history_.last_begin() + options_.patience) {
    Kill("it was ended because it did not answer for more than " + Seconds(patience));
  }
}

void SetProcess::Kill(const std::string& reason) {
  kill_reason_ = reason;
  if (child_) child_->Kill();
}

void SetProcess::Restart() {
  if (state_ == State::kDown) {
    history_.ForgetDeaths();
    Spawn();
    return listener_.OnProcessChanged();
  }
  Kill("it was restarted by hand");
}

void SetProcess::Stop(std::function<void()> stopped) {
  const bool has_ended = child_ == nullptr;
  state_ = State::kStopping;
  pending_.FailAll("the runtime is ending");
  if (has_ended) return stopped();
  stopped_ = std::move(stopped);
  child_->Send(WholeFrame({{"op", "shutdown"}}, ""));
  child_->EndWithin(options_.stop_grace);
}

Json SetProcess::Description() const {
  const char* state = "running";
  if (state_ == State::kDown) state = "down";
  if (state_ == State::kStarting) state = was_started_ ? "restarting" : "starting";
  return {{"state", state},
          {"pid", pid()},
          {"handling", history_.Message()},
          {"deaths", history_.Deaths()}};
}

}  // namespace orvane::set_process
