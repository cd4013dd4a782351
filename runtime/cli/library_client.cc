// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/library_client.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

#include "base/base64.h"
#include "cli/exit_code.h"
#include "cli/json_read.h"

namespace orvane::cli {

using picojson::object;
using picojson::value;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr int kChildSocket = 3;
// It closes its socket a moment before it has ended, and ends so long after this side has closed.
constexpr milliseconds kEnding{5000};

std::unique_ptr<base::ChildProcess> Spawn(int socket) {
  return std::make_unique<base::ChildProcess>(
      std::vector<std::string>{"/proc/self/exe", "set-process", "--fd",
                               std::to_string(kChildSocket)},
      base::ChildProcess::Descriptors{{STDERR_FILENO, STDERR_FILENO}, {socket, kChildSocket}});
}

std::string OpOf(const value& frame) { return frame.get("op").to_str(); }

int64_t Integer(const value& number) { return WholeNumber(number).value_or(0); }

value ValueOf(const base::Frame& frame) {
  value head;
  picojson::parse(head, base::JsonText(frame.head));
  const bool is_binary = frame.head.value("binary", false);
  object& members = head.get<object>();
  const value text(is_binary ? base::EncodeBase64(frame.body) : std::string(frame.body));
  members["text"] = text;
  if (members.count("result") == 0) members["result"] = text;
  if (members.count("error") != 0) members["error"] = value(members["error"]).get("message");
  return head;
}

std::string Seconds(milliseconds time) {
  char text[32];
  std::snprintf(text, sizeof text, "%g s", static_cast<double>(time.count()) / 1000);
  return text;
}

}  // namespace

LibraryClient::LibraryClient(milliseconds deadline) : deadline_(deadline) {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    throw std::system_error(errno, std::system_category(), "socketpair");
  }
  socket_ = ends[0];
  child_ = Spawn(ends[1]);
  close(ends[1]);
}

LibraryClient::~LibraryClient() {
  close(socket_);
  child_->Wait(kEnding);
}

void LibraryClient::Start(const object& options) {
  Send({{"op", value("start")}, {"options", value(options)}});
  const TimePoint until = Deadline();
  while (true) {
    const value frame = ReceiveInTime(until);
    if (OpOf(frame) == "started") return;
    if (OpOf(frame) == "failed") throw UsageError(frame.get("error").to_str());
    Note(frame);
  }
}

// What comes meanwhile is taken in: a process that waits to be heard does not listen.
void LibraryClient::Send(const object& request) {
  object head = request;
  std::string body = head["text"].is<std::string>() ? head["text"].get<std::string>() : "";
  head.erase("text");
  if (head.count("binary") != 0) body = base::DecodeBase64(body).value_or("");
  if (head.count("args") != 0) body = head["args"].serialize();
  std::string bytes;
  base::AppendFrame(value(head).serialize(), body, &bytes);
  std::string_view left = bytes;
  const TimePoint until = Deadline();
  while (!left.empty()) {
    const int ready = Wait(POLLIN | POLLOUT, until);
    if (ready == 0) GiveUp();
    if ((ready & POLLIN) != 0) ReadSome();
    if ((ready & POLLOUT) == 0) continue;
    const ssize_t count = send(socket_, left.data(), left.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count > 0) left.remove_prefix(static_cast<size_t>(count));
    if (count < 0 && errno != EINTR && errno != EAGAIN) Die();
  }
}

value LibraryClient::Call(object request) {
  const int64_t id = ++last_id_;
  request["id"] = value(static_cast<double>(id));
  Send(request);
  const TimePoint until = Deadline();
  while (true) {
    value frame = ReceiveInTime(until);
    if (OpOf(frame) == "answer" && Integer(frame.get("id")) == id) return frame;
    Note(frame);
  }
}

bool LibraryClient::WaitForPosted(TimePoint until) {
  const size_t before = posted_.size();
  while (posted_.size() == before) {
    const std::optional<value> frame = Receive(until);
    if (!frame) return false;
    Note(*frame);
  }
  return true;
}

int LibraryClient::Wait(int events, TimePoint until) const {
  const auto left = std::chrono::ceil<milliseconds>(until - steady_clock::now());
  pollfd descriptor{socket_, static_cast<int16_t>(events), 0};
  const int count = poll(&descriptor, 1, static_cast<int>(std::max<int64_t>(left.count(), 0)));
  if (count < 0 && errno == EINTR) return Wait(events, until);
  if (count <= 0) return 0;
  const int ready = descriptor.revents & events;
  return ready != 0 ? ready : events & POLLIN;  // it was closed, as reading tells
}

std::optional<value> LibraryClient::Receive(TimePoint until) {
  while (true) {
    if (const auto frame = reader_.Next()) return ValueOf(*frame);
    if (Wait(POLLIN, until) == 0) return std::nullopt;
    ReadSome();
  }
}

value LibraryClient::ReceiveInTime(TimePoint until) {
  std::optional<value> frame = Receive(until);
  if (!frame) GiveUp();
  return *std::move(frame);
}

void LibraryClient::ReadSome() {
  std::array<char, size_t{64} << 10> bytes{};
  const ssize_t count = recv(socket_, bytes.data(), bytes.size(), MSG_DONTWAIT);
  if (count > 0) return reader_.Append({bytes.data(), static_cast<size_t>(count)});
  if (count == 0 || (errno != EINTR && errno != EAGAIN)) Die();
}

void LibraryClient::Note(const value& frame) {
  if (OpOf(frame) == "posted") {
    posted_.push_back({Integer(frame.get("context")), frame.get("extension").to_str(),
                       frame.get("text").to_str()});
  } else if (OpOf(frame) == "handling") {
    handling_ = frame.get("what").to_str() + " " + frame.get("name").to_str();
    const std::string text = frame.get("text").to_str();
    if (!text.empty()) handling_ += " " + text;
  }
}

std::string LibraryClient::While() const {
  return handling_.empty() ? std::string() : " while it handled " + handling_;
}

// What it said before its end is read first: that names the message.
void LibraryClient::Die() {
  while (const auto frame = reader_.Next()) Note(ValueOf(*frame));
  const bool has_ended = child_->Wait(kEnding);
  const std::string how = has_ended ? Describe(*child_->end()) : "it closed its connection";
  child_->Signal(SIGKILL);
  throw LibraryDied("the library's process ended" + While() + ": " + how);
}

void LibraryClient::GiveUp() {
  child_->Signal(SIGKILL);
  throw LibraryDied("the library's process was ended" + While() + ": it did not answer within " +
                    Seconds(deadline_));
}

}  // namespace orvane::cli
