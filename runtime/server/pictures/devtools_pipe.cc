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

// What the protocol says of a failed command.
std::string ErrorText(const picojson::object& answer) {
  const auto error = answer.find("error");
  if (error == answer.end() || !error->second.is<picojson::object>()) return {};
  return error->second.get("message").to_str();
}

}  // namespace

DevToolsPipe::DevToolsPipe(int socket) : socket_(socket) { fcntl(socket_, F_SETFL, O_NONBLOCK); }

DevToolsPipe::~DevToolsPipe() { close(socket_); }

picojson::object DevToolsPipe::Call(const std::string& method, const picojson::object& parameters,
                                    const std::string& session, Deadline deadline) {
  const auto id = static_cast<double>(++last_id_);
  picojson::object message{{"id", picojson::value(id)},
                           {"method", picojson::value(method)},
                           {"params", picojson::value(parameters)}};
  if (!session.empty()) message["sessionId"] = picojson::value(session);
  Write(picojson::value(message).serialize(), deadline);
  while (true) {
    picojson::object answer = Read(deadline);
    const auto answered = answer.find("id");
    if (answered == answer.end() || !answered->second.is<double>() ||
        answered->second.get<double>() != id) {
      continue;
    }
    std::string error = ErrorText(answer);
    if (!error.empty()) throw BrowserError(error.insert(0, "The browser refused " + method + ": "));
    const picojson::value& result = answer["result"];
    return result.is<picojson::object>() ? result.get<picojson::object>() : picojson::object();
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

picojson::object DevToolsPipe::Read(Deadline deadline) {
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
  picojson::value message;
  std::string error;
  const char* const begin = received_.data();
  picojson::parse(message, begin, begin + end, &error);
  received_.erase(0, end + 1);
  if (!error.empty() || !message.is<picojson::object>()) {
    throw BrowserError("The browser sent what is no message: " + error);
  }
  return message.get<picojson::object>();
}

}  // namespace orvane::server
