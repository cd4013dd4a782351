// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/library.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "server/frame_channel.h"
#include "server/json_writer.h"
#include "server/net.h"
#include "server/stderr_tail.h"
#include "server/wall_clock.h"

namespace orvane::server {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr int kChildSocket = 3;
constexpr milliseconds kDeadlineTick{50};
constexpr milliseconds kReapTick{5};
constexpr milliseconds kEndGrace{1000};   // between the end of the socket and of the process
constexpr milliseconds kStopGrace{2500};  // after the request to end
constexpr size_t kManyDeaths = 3;
constexpr std::chrono::seconds kShortTime{5};
constexpr size_t kKeptDeaths = 20;
constexpr std::string_view kHandlingHead = R"({"op":"handling")";

std::pair<UniqueFd, UniqueFd> MakeSocketPair() {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    throw std::system_error(errno, std::generic_category(), "socketpair");
  }
  return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

std::pair<UniqueFd, UniqueFd> MakePipe() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe2");
  }
  return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

std::string Seconds(milliseconds time) {
  std::string text = std::to_string(static_cast<double>(time.count()) / 1000);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text + " s";
}

std::string TooLong(size_t bytes) {
  return "it has " + std::to_string(bytes) + " bytes, and the library process takes at most " +
         std::to_string(frames::kMaxBodyBytes) + "; send less at a time";
}

std::string OrNull(std::string_view json) { return json.empty() ? "null" : std::string(json); }

}  // namespace

struct Library::Process {
  Process(asio::io_context& loop, std::unique_ptr<process::ChildProcess> started, UniqueFd output)
      : child(std::move(started)),
        tail(std::make_shared<StderrTail>(loop, std::move(output))),
        timer(loop) {}
  ~Process() {
    if (channel) channel->Close();
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  const std::unique_ptr<process::ChildProcess> child;
  const std::shared_ptr<StderrTail> tail;
  std::shared_ptr<FrameChannel> channel;
  asio::steady_timer timer;
};

Library::Library(asio::io_context& loop, LibraryListener& listener, LibraryOptions options)
    : loop_(loop), listener_(listener), options_(std::move(options)) {}

Library::~Library() = default;

pid_t Library::pid() const { return process_ ? process_->child->pid() : 0; }

void Library::Start() { Spawn(); }

void Library::Spawn() {
  auto [server_end, child_end] = MakeSocketPair();
  auto [read_end, write_end] = MakePipe();
  auto child = std::make_unique<process::ChildProcess>(
      options_.command,
      process::ChildProcess::Descriptors{
          {write_end.get(), 1}, {write_end.get(), 2}, {child_end.get(), kChildSocket}});
  process_ = std::make_shared<Process>(loop_, std::move(child), std::move(read_end));
  process_->tail->Start();
  process_->channel = std::make_shared<FrameChannel>(
      loop_, std::move(server_end),
      FrameChannel::Receiver{[this](std::string_view body) { OnFrame(body); },
                             [this] { OnClosed(); }});
  process_->channel->Start();
  state_ = State::kStarting;
  spawned_at_ = steady_clock::now();
  handling_.clear();
  is_handled_ = false;
  kill_reason_.clear();
  process_->channel->Send(JsonWriter()
                              .Text("op", "start")
                              .Raw("options", options_.start_options)
                              .Raw("snapshot", snapshot_)
                              .Take());
  WatchDeadlines();
}

void Library::Request(std::string_view operation, std::string_view members, Receiver receiver) {
  if (state_ == State::kDown || state_ == State::kStopping) {
    LibraryAnswer answer;
    answer.failure = "the library process is down; restart it in the simulator, or run it again";
    return receiver(answer);
  }
  const uint64_t id = ++last_id_;
  std::string body = R"({"op":")";
  body.append(operation).append(R"(","id":)").append(std::to_string(id));
  if (!members.empty()) body.append(",").append(members);
  body += '}';
  if (body.size() > frames::kMaxBodyBytes) {
    LibraryAnswer answer;
    answer.failure = TooLong(body.size());
    return receiver(answer);
  }
  pending_[id] = {std::move(receiver), steady_clock::now() + options_.deadline};
  WatchDeadlines();
  Send(body);
}

void Library::Post(std::string_view operation, std::string_view members) {
  std::string body = R"({"op":")";
  body.append(operation).append("\",").append(members).append("}");
  if (body.size() > frames::kMaxBodyBytes) {
    const std::string text = "A posted message was dropped: " + TooLong(body.size()) + ".";
    return listener_.OnEvent("explain", JsonWriter().Text("text", text).Take());
  }
  if (state_ == State::kStarting || state_ == State::kRunning) Send(body);
}

void Library::Send(std::string_view body) {
  if (state_ == State::kStarting) {
    held_.emplace_back(body);
  } else {
    process_->channel->Send(body);
  }
}

size_t Library::queued_bytes() const {
  size_t bytes = process_ && process_->channel ? process_->channel->queued_bytes() : 0;
  for (const std::string& body : held_) bytes += body.size();
  return bytes;
}

void Library::OnFrame(std::string_view body) {
  if (body.substr(0, kHandlingHead.size()) == kHandlingHead) {
    handling_ = body;
    handling_since_ = steady_clock::now();
    is_handled_ = false;
    return;
  }
  const auto frame = JsonObject::Parse(body);
  if (!frame) return;
  const std::string_view operation = frame->Raw("op");
  if (operation == R"("answer")") return OnAnswer(*frame);
  if (operation == R"("posted")") {
    return listener_.OnPosted(frame->Integer("context").value_or(0), frame->RawText("extension"),
                              frame->RawText("text"));
  }
  if (operation == R"("event")") {
    return listener_.OnEvent(frame->Text("name").value_or(""), frame->Raw("data"));
  }
  if (operation == R"("handled")") is_handled_ = true;
  if (operation == R"("snapshot")") snapshot_ = OrNull(frame->Raw("data"));
  if (operation == R"("started")") OnProcessStarted(*frame);
  if (operation == R"("failed")") OnProcessFailed(*frame);
}

void Library::OnAnswer(const JsonObject& frame) {
  const auto found = pending_.find(static_cast<uint64_t>(frame.Integer("id").value_or(0)));
  if (found == pending_.end()) {
    // The answer to a message that wants none: why it was refused.
    if (!frame.RawText("error").empty()) {
      listener_.OnEvent("explain", JsonWriter().Raw("text", frame.RawText("error")).Take());
    }
    return;
  }
  const Receiver receiver = std::move(found->second.receiver);
  pending_.erase(found);
  if (!receiver) return;
  LibraryAnswer answer;
  answer.error = frame.RawText("error");
  if (answer.error.empty()) answer.result = frame.Raw("result");
  if (answer.error.empty() && answer.result.empty()) answer.result = "null";
  answer.microseconds = frame.Integer("us").value_or(-1);
  receiver(answer);
}

void Library::OnProcessStarted(const JsonObject& frame) {
  if (state_ != State::kStarting) return;  // it was told to stop meanwhile
  state_ = State::kRunning;
  for (const std::string& body : std::exchange(held_, {})) process_->channel->Send(body);
  if (std::exchange(was_started_, true)) {
    listener_.OnProcessChanged();
  } else {
    listener_.OnStarted(frame);
  }
}

void Library::OnProcessFailed(const JsonObject& frame) {
  if (state_ != State::kStarting) return;
  const std::string why = frame.Text("error").value_or("the library process could not start");
  if (was_started_) return GoDown(why);
  listener_.OnStartFailed(why);
}

void Library::OnClosed() { Reap(steady_clock::now() + kEndGrace); }

// Its socket is closed, or will be: waits for the process itself without blocking the loop.
void Library::Reap(TimePoint kill_at) {
  if (const auto end = process_->child->end()) return OnDeath(*end);
  if (steady_clock::now() >= kill_at) process_->child->Signal(SIGKILL);
  process_->timer.expires_after(kReapTick);
  process_->timer.async_wait(
      [this, process = std::weak_ptr<Process>(process_), kill_at](beast::error_code error) {
        if (!error && !process.expired()) Reap(kill_at);
      });
}

void Library::OnDeath(const process::ProcessEnd& end) {
  if (state_ == State::kStopping) return stopped_ ? std::exchange(stopped_, nullptr)() : void();
  NoteDeath(end, process_->tail->Finish());
  const std::string why = "the library process ended" +
                          (IsHandling() ? " while it handled " + HandlingWords() : "") + ": " +
                          EndWords(end);
  process_.reset();
  held_.clear();
  if (!was_started_) return listener_.OnStartFailed(why);
  FailPending(why);
  if (DiesTooOften()) return GoDown("");
  Spawn();
  listener_.OnRestarted();
  listener_.OnProcessChanged();
}

void Library::NoteDeath(const process::ProcessEnd& end, const std::string& stderr_text) {
  JsonWriter json;
  json.Number("time_ns", NowNs());
  json.Number("signal", end.signal).Number("exit", end.exit_code);
  json.Text("reason", EndWords(end));
  json.Raw("handling", HandlingJson()).Text("stderr", stderr_text);
  if (deaths_.size() == kKeptDeaths) deaths_.erase(deaths_.begin());
  deaths_.push_back({steady_clock::now(), json.Take()});
}

bool Library::DiesTooOften() const {
  return deaths_.size() >= kManyDeaths &&
         deaths_.back().time - deaths_[deaths_.size() - kManyDeaths].time < kShortTime;
}

void Library::GoDown(const std::string& why) {
  process_.reset();
  state_ = State::kDown;
  FailPending(why.empty() ? "the library process is down" : why);
  listener_.OnRestarted();
  listener_.OnProcessChanged();
}

void Library::FailPending(const std::string& why) {
  for (auto& [id, pending] : std::exchange(pending_, {})) {
    LibraryAnswer answer;
    answer.failure = why;
    if (pending.receiver) pending.receiver(answer);
  }
}

void Library::WatchDeadlines() {
  if (std::exchange(watching_deadlines_, true)) return;
  const auto timer = std::make_shared<asio::steady_timer>(loop_, kDeadlineTick);
  timer->async_wait([this, timer](beast::error_code error) {
    if (error) return;
    watching_deadlines_ = false;
    CheckDeadlines();
    if (!pending_.empty() || state_ == State::kStarting) WatchDeadlines();
  });
}

void Library::CheckDeadlines() {
  const TimePoint now = steady_clock::now();
  EndStuckStart(now);
  std::vector<Receiver> late;
  for (auto& [id, pending] : pending_) {
    if (now < pending.deadline) break;  // they all have the same time, so that the rest is later
    if (pending.receiver) late.push_back(std::exchange(pending.receiver, nullptr));
    if (kill_reason_.empty() && IsStuck(pending, now)) {
      kill_reason_ = "it was ended because it did not answer for more than " +
                     Seconds(options_.deadline + options_.patience);
      process_->child->Signal(SIGKILL);
    }
  }
  LibraryAnswer answer;
  answer.failure = "there was no answer within " + Seconds(options_.deadline) + "; the library " +
                   (IsHandling() ? "is busy with " + HandlingWords() : "process takes no message");
  for (const Receiver& receiver : late) receiver(answer);
}

// An extension that never returns from its initialisation would keep it from starting for ever.
void Library::EndStuckStart(TimePoint now) {
  const milliseconds patience = options_.deadline + options_.patience;
  if (state_ != State::kStarting || !kill_reason_.empty() || now < spawned_at_ + patience) return;
  kill_reason_ = "it was ended because it had not started after " + Seconds(patience);
  process_->child->Signal(SIGKILL);
}

// The request waits, whether in its own handler or behind another that does not end.
bool Library::IsStuck(const Pending& pending, TimePoint now) const {
  return state_ == State::kRunning && now >= pending.deadline + options_.patience &&
         now >= handling_since_ + options_.patience;
}

bool Library::IsHandling() const {
  const auto frame = JsonObject::Parse(handling_);
  if (!frame || is_handled_) return false;
  const auto id = static_cast<uint64_t>(frame->Integer("id").value_or(0));
  return id == 0 || pending_.count(id) != 0;  // else it is answered
}

std::string Library::HandlingJson() const {
  if (!IsHandling()) return "null";
  const auto frame = JsonObject::Parse(handling_);
  JsonWriter json;
  for (const char* const name : {"what", "context", "name", "text"}) {
    json.Raw(name, OrNull(frame->Raw(name)));
  }
  return json.Take();
}

std::string Library::HandlingWords() const {
  const auto frame = JsonObject::Parse(handling_);
  if (!frame) return "";
  const std::string text = frame->Text("text").value_or("");
  const auto message = JsonObject::Parse(text);
  const std::string command = message ? message->Text("cmd").value_or("") : "";
  std::string words = frame->Text("what").value_or("") + " ";
  words += frame->Text("name").value_or("");
  return command.empty() ? words : words + " \"" + command + "\"";
}

// How the process ended, and what it did last if that was done.
std::string Library::EndWords(const process::ProcessEnd& end) const {
  std::string words = kill_reason_.empty() ? Describe(end) : kill_reason_;
  if (IsHandling() || handling_.empty()) return words;
  return words + ", with no message in hand; the last one was " + HandlingWords();
}

void Library::Restart() {
  if (state_ == State::kDown) {
    deaths_.clear();
    Spawn();
    return listener_.OnProcessChanged();
  }
  kill_reason_ = "it was restarted by hand";
  process_->child->Signal(SIGKILL);
}

void Library::Stop(std::function<void()> stopped) {
  const bool has_ended = process_ == nullptr;
  state_ = State::kStopping;
  FailPending("the runtime is ending");
  if (has_ended) return stopped();
  stopped_ = std::move(stopped);
  process_->channel->Send(R"({"op":"shutdown"})");
  Reap(steady_clock::now() + kStopGrace);
}

std::string Library::Json() const {
  const char* state = "running";
  if (state_ == State::kDown) state = "down";
  if (state_ == State::kStarting) state = deaths_.empty() ? "starting" : "restarting";
  JsonWriter json;
  json.Text("state", state).Number("pid", pid());
  json.Raw("deaths", JsonArray(deaths_, [](const Death& death) { return death.json; }));
  return json.Take();
}

}  // namespace orvane::server
