// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/set_process.h"

#include <system_error>
#include <utility>

#include "base/frame.h"
#include "base/json_writer.h"
#include "base/net.h"
#include "set_process/spawned_process.h"

namespace orvane::set_process {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr milliseconds kDeadlineTick{50};
constexpr milliseconds kStopGrace{2500};  // after the request to end
// Of a message; the rest of its frame is short.
constexpr size_t kMostMemberBytes = base::kMaxBodyBytes - 1024;

std::string Seconds(milliseconds time) {
  std::string text = std::to_string(static_cast<double>(time.count()) / 1000);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text + " s";
}

std::string TooLong(size_t bytes) {
  return "it has " + std::to_string(bytes) + " bytes, and the set process takes at most " +
         std::to_string(kMostMemberBytes) + "; send less at a time";
}

std::string OrNull(std::string_view json) { return json.empty() ? "null" : std::string(json); }

}  // namespace

SetProcess::SetProcess(asio::io_context& loop, SetProcessListener& listener,
                       SetProcessOptions options)
    : loop_(loop), listener_(listener), options_(std::move(options)) {}

SetProcess::~SetProcess() = default;

pid_t SetProcess::pid() const { return child_ ? child_->pid() : 0; }

void SetProcess::Start() { Spawn(); }

void SetProcess::Spawn() {
  state_ = State::kStarting;
  spawned_at_ = steady_clock::now();
  handled_.Clear();
  kill_reason_.clear();
  try {
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
      loop_, options_.command,
      SpawnedProcess::Receiver{
          [this](std::string_view body) { OnFrame(body); },
          [this](const base::ProcessEnd& end, const std::string& output) { OnEnd(end, output); }});
  child_->Listen();
  child_->Send(base::JsonWriter()
                   .Text("op", "start")
                   .Raw("options", options_.start_options)
                   .Raw("snapshot", snapshot_)
                   .Take());
}

void SetProcess::Request(std::string_view operation, std::string_view members, Receiver receiver) {
  if (state_ == State::kDown || state_ == State::kStopping) {
    SetProcessAnswer answer;
    answer.failure = "the set process is down; restart it in the simulator, or run it again";
    return receiver(answer);
  }
  if (members.size() > kMostMemberBytes) {
    SetProcessAnswer answer;
    answer.failure = TooLong(members.size());
    return receiver(answer);
  }
  const uint64_t id = pending_.Add(std::move(receiver), steady_clock::now() + options_.deadline);
  WatchDeadlines();
  std::string body = R"({"op":")";
  body.append(operation).append(R"(","id":)").append(std::to_string(id));
  if (!members.empty()) body.append(",").append(members);
  body += '}';
  Send(body);
}

void SetProcess::Post(std::string_view operation, std::string_view members) {
  std::string body = R"({"op":")";
  body.append(operation).append("\",").append(members).append("}");
  if (members.size() > kMostMemberBytes) {
    const std::string text = "A posted message was dropped: " + TooLong(members.size()) + ".";
    return listener_.OnEvent("explain", base::JsonWriter().Text("text", text).Take());
  }
  if (state_ == State::kStarting || state_ == State::kRunning) Send(body);
}

void SetProcess::Send(std::string_view body) {
  if (state_ == State::kStarting) {
    held_.emplace_back(body);
  } else {
    child_->Send(body);
  }
}

size_t SetProcess::queued_bytes() const {
  size_t bytes = child_ ? child_->queued_bytes() : 0;
  for (const std::string& body : held_) bytes += body.size();
  return bytes;
}

void SetProcess::OnFrame(std::string_view body) {
  if (HandledMessage::IsToldBy(body)) return handled_.Begin(body);
  const auto frame = base::JsonObject::Parse(body);
  if (!frame) return;
  const std::string_view operation = frame->Raw("op");
  if (operation == R"("answer")") return OnAnswer(*frame);
  if (operation == R"("posted")") {
    return listener_.OnPosted(
        frame->Integer("context").value_or(0),
        {frame->RawText("extension"), frame->RawText("text"), frame->Flag("binary")});
  }
  if (operation == R"("event")") {
    return listener_.OnEvent(frame->Text("name").value_or(""), frame->Raw("data"));
  }
  if (operation == R"("handled")") handled_.End();
  if (operation == R"("snapshot")") snapshot_ = OrNull(frame->Raw("data"));
  if (operation == R"("started")") OnProcessStarted(*frame);
  if (operation == R"("failed")") OnProcessFailed(*frame);
}

void SetProcess::OnAnswer(const base::JsonObject& frame) {
  const auto receiver = pending_.Take(static_cast<uint64_t>(frame.Integer("id").value_or(0)));
  if (!receiver) {
    // The answer to a message that wants none: why it was refused.
    if (!frame.RawText("error").empty()) {
      listener_.OnEvent("explain", base::JsonWriter().Raw("text", frame.RawText("error")).Take());
    }
    return;
  }
  if (!*receiver) return;  // too late
  SetProcessAnswer answer;
  answer.error = frame.RawText("error");
  if (answer.error.empty()) answer.result = frame.Raw("result");
  if (answer.error.empty() && answer.result.empty()) answer.result = "null";
  answer.microseconds = frame.Integer("us").value_or(-1);
  (*receiver)(answer);
}

void SetProcess::OnProcessStarted(const base::JsonObject& frame) {
  if (state_ != State::kStarting) return;  // it was told to stop meanwhile
  state_ = State::kRunning;
  for (const std::string& body : std::exchange(held_, {})) child_->Send(body);
  if (std::exchange(was_started_, true)) {
    listener_.OnProcessChanged();
  } else {
    listener_.OnStarted(frame);
  }
}

void SetProcess::OnProcessFailed(const base::JsonObject& frame) {
  if (state_ != State::kStarting) return;
  const std::string why = frame.Text("error").value_or("the set process could not start");
  if (was_started_) return GoDown(why);
  listener_.OnStartFailed(why);
}

void SetProcess::OnEnd(const base::ProcessEnd& end, const std::string& output) {
  if (state_ == State::kStopping) return stopped_ ? std::exchange(stopped_, nullptr)() : void();
  deaths_.Add(end, EndWords(end), IsHandling() ? handled_.Json() : "null", output);
  const std::string why = "the set process ended" +
                          (IsHandling() ? " while it handled " + handled_.Words() : "") + ": " +
                          EndWords(end);
  child_.reset();
  held_.clear();
  if (!was_started_) return listener_.OnStartFailed(why);
  pending_.FailAll(why);
  if (deaths_.AreTooMany()) return GoDown("");
  Spawn();
  if (state_ == State::kDown) return;  // and that was told
  listener_.OnRestarted();
  listener_.OnProcessChanged();
}

void SetProcess::GoDown(const std::string& why) {
  child_.reset();
  held_.clear();
  state_ = State::kDown;
  pending_.FailAll(why.empty() ? "the set process is down" : why);
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
  SetProcessAnswer answer;
  answer.failure = "there was no answer within " + Seconds(options_.deadline) + "; the library " +
                   (IsHandling() ? "is busy with " + handled_.Words() : "process takes no message");
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
      now >= handled_.since() + options_.patience) {
    Kill("it was ended because it did not answer for more than " + Seconds(patience));
  }
}

void SetProcess::Kill(const std::string& reason) {
  kill_reason_ = reason;
  if (child_) child_->Kill();
}

bool SetProcess::IsHandling() const {
  if (!handled_.is_open()) return false;
  const uint64_t request = handled_.request();
  return request == 0 || pending_.Has(request);  // else it is answered
}

// How the process ended, and what it did last if that was done.
std::string SetProcess::EndWords(const base::ProcessEnd& end) const {
  std::string words = kill_reason_.empty() ? Describe(end) : kill_reason_;
  if (IsHandling() || !handled_.is_known()) return words;
  return words + ", with no message in hand; the last one was " + handled_.Words();
}

void SetProcess::Restart() {
  if (state_ == State::kDown) {
    deaths_.Clear();
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
  child_->Send(R"({"op":"shutdown"})");
  child_->EndWithin(kStopGrace);
}

std::string SetProcess::Json() const {
  const char* state = "running";
  if (state_ == State::kDown) state = "down";
  if (state_ == State::kStarting) state = deaths_.empty() ? "starting" : "restarting";
  base::JsonWriter json;
  json.Text("state", state).Number("pid", pid());
  json.Raw("handling", IsHandling() ? handled_.Json() : "null");
  json.Raw("deaths", deaths_.Json());
  return json.Take();
}

}  // namespace orvane::set_process
