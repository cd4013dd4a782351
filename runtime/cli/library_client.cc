// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/library_client.h"

#include <poll.h>
#include <string.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include <spawn.h>

#include "cli/exit_code.h"
#include "host/bounded_json.h"

namespace orvane::cli {

using picojson::object;
using picojson::value;

namespace {

constexpr int kChildSocket = 3;

pid_t Spawn(int socket) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, socket, kChildSocket);
  std::string arguments[] = {"orvane", "library-process", "--fd", std::to_string(kChildSocket)};
  char* argv[] = {arguments[0].data(), arguments[1].data(), arguments[2].data(),
                  arguments[3].data(), nullptr};
  pid_t pid = -1;
  const int error = posix_spawn(&pid, "/proc/self/exe", &actions, nullptr, argv, environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) throw std::system_error(error, std::system_category(), "the library process");
  return pid;
}

std::string OpOf(const value& frame) { return frame.get("op").to_str(); }

int64_t Integer(const value& number) {
  return number.is<double>() ? static_cast<int64_t>(number.get<double>()) : 0;
}

}  // namespace

LibraryClient::LibraryClient() {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    throw std::system_error(errno, std::system_category(), "socketpair");
  }
  // A descriptor that is already the child's number would keep its close-on-exec mark.
  const int childs = ends[1] == kChildSocket ? dup(ends[1]) : ends[1];
  socket_ = ends[0];
  pid_ = Spawn(childs);
  if (childs != ends[1]) close(childs);
  close(ends[1]);
}

LibraryClient::~LibraryClient() {
  close(socket_);
  while (pid_ > 0 && waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

void LibraryClient::Start(const object& options) {
  Send({{"op", value("start")}, {"options", value(options)}});
  while (true) {
    const value frame = Receive();
    if (OpOf(frame) == "started") return;
    if (OpOf(frame) == "failed") throw UsageError(frame.get("error").to_str());
    Note(frame);
  }
}

void LibraryClient::Send(const object& request) {
  std::string bytes;
  frames::AppendFrame(value(request).serialize(), &bytes);
  if (!frames::SendBytes(socket_, bytes)) Die();
}

value LibraryClient::Call(object request) {
  const int64_t id = ++last_id_;
  request["id"] = value(static_cast<double>(id));
  Send(request);
  while (true) {
    value frame = Receive();
    if (OpOf(frame) == "answer" && Integer(frame.get("id")) == id) return frame;
    Note(frame);
  }
}

bool LibraryClient::WaitForPosted(TimePoint until) {
  const size_t before = posted_.size();
  while (posted_.size() == before) {
    if (reader_.buffered() == 0) {
      const auto left =
          std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
      pollfd readable{socket_, POLLIN, 0};
      const auto timeout = std::max<int64_t>(left.count(), 0);
      if (poll(&readable, 1, static_cast<int>(timeout)) <= 0) return false;
    }
    Note(Receive());
  }
  return true;
}

value LibraryClient::Receive() {
  const auto body = frames::ReceiveFrame(socket_, &reader_);
  if (!body) Die();
  std::string error;
  std::optional<value> frame = host::ParseBoundedJson(*body, &error);
  return frame && frame->is<object>() ? *std::move(frame) : value(object());
}

void LibraryClient::Note(const value& frame) {
  if (OpOf(frame) == "posted") {
    posted_.push_back({Integer(frame.get("context")), frame.get("extension").to_str(),
                       frame.get("text").to_str()});
  } else if (OpOf(frame) == "handling") {
    handling_ = frame.get("what").to_str() + " " + frame.get("name").to_str() + " " +
                frame.get("text").to_str();
  }
}

void LibraryClient::Die() {
  int status = 0;
  while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
  }
  pid_ = -1;
  std::string how = WIFSIGNALED(status) ? std::string("by signal ") + strsignal(WTERMSIG(status))
                                        : "with " + std::to_string(WEXITSTATUS(status));
  if (!handling_.empty()) how += " while it handled " + handling_;
  throw LibraryDied("the library's process ended " + how);
}

}  // namespace orvane::cli
