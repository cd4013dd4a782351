// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pictures/devtools_pipe.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "server/pictures/browser_error.h"

namespace orvane::server {

namespace {

constexpr size_t kLongestMessage = size_t{256} << 20;

void WaitFor(int descriptor, short events, DevToolsPipe::Deadline deadline) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
      deadline - std::chrono::steady_clock::now());
  pollfd entry{descriptor, events, 0};
  const int ready = poll(&entry, 1, static_cast<int>(std::max<int64_t>(left.count(), 0)));
  if (ready == 0) throw BrowserError("The browser did not answer in time.");
  if (ready < 0 && errno != EINTR) {
    throw BrowserError(std::string("Waiting for the browser failed: ") + std::strerror(errno));
  }
}

}  // namespace

DevToolsPipe::DevToolsPipe(int socket) : socket_(socket) { fcntl(socket_, F_SETFL, O_NONBLOCK); }

DevToolsPipe::~DevToolsPipe() { close(socket_); }

Json DevToolsPipe::Call(const std::string& method, const Json& parameters,
                        const std::string& session, Deadline deadline) {
  const int64_t id = ++last_id_;
  Json message{{"id", id}, {"method", method}, {"params", parameters}};
  if (!session.empty()) message["sessionId"] = session;
  Write(base::JsonText(message), deadline);
  while (true) {
    const Json answer = Read(deadline);
    if (answer.value("id", Json()) != id) continue;
    const Json error = answer.value("error", Json());
    if (error.is_object()) {
      throw BrowserError("The browser refused " + method + ": " +
                         base::JsonText(error.value("message", Json())));
    }
    const Json result = answer.value("result", Json());
    return result.is_object() ? result : Json::object();
  }
}

void DevToolsPipe::Write(const std::string& text, Deadline deadline) {
  size_t sent = 0;
  while (sent < text.size() + 1) {  // c_str() has the zero byte
    WaitFor(socket_, POLLOUT, deadline);
    const ssize_t count = send(socket_, text.c_str() + sent, text.size() + 1 - sent, MSG_NOSIGNAL);
    if (count > 0) {
      sent += static_cast<size_t>(count);
    } else if (errno != EAGAIN && errno != EINTR) {
      throw BrowserError("The browser has ended.");
    }
  }
}

Json DevToolsPipe::Read(Deadline deadline) {
  std::array<char, 65536> part{};
  size_t end = received_.find('\0');
  while (end == std::string::npos) {
    WaitFor(socket_, POLLIN, deadline);
    const ssize_t count = read(socket_, part.data(), part.size());
    if (count == 0) throw BrowserError("The browser has ended.");
    if (count < 0) {
      if (errno == EAGAIN || errno == EINTR) continue;
      if (errno == ECONNRESET) throw BrowserError("The browser has ended.");
      throw BrowserError(std::string("Reading from the browser failed: ") + std::strerror(errno));
    }
    const size_t searched = received_.size();
    received_.append(part.data(), static_cast<size_t>(count));
    if (received_.size() > kLongestMessage) throw BrowserError("The browser's answer is too long.");
    end = received_.find('\0', searched);
  }
  const std::string text = received_.substr(0, end);
  received_.erase(0, end + 1);
  try {
    Json message = base::ParseJson(text);
    if (message.is_object()) return message;
  } catch (const base::JsonError& error) {
    throw BrowserError(std::string("The browser sent what is no message: ") + error.what());
  }
  throw BrowserError("The browser sent what is no message.");
}

}  // namespace orvane::server
