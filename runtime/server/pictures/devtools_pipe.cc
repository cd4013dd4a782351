// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pictures/devtools_pipe.h"

#include <optional>
#include <stdexcept>

#include <boost/asio/read_until.hpp>

namespace orvane::server {

DevToolsPipe::DevToolsPipe(int socket) { socket_.assign({}, socket); }

// Starts an operation and waits until it is done. Returns how many bytes it had.
template <class Start>
size_t DevToolsPipe::Await(Deadline deadline, const Start& start) {
  std::optional<beast::error_code> result;
  size_t count = 0;
  start([&](beast::error_code error, size_t bytes) {
    result = error;
    count = bytes;
  });
  loop_.restart();
  loop_.run_until(deadline);
  if (!result) {
    socket_.close();
    loop_.run();  // the operation ends
    throw std::runtime_error("The browser did not answer in time.");
  }
  if (*result == asio::error::not_found) {
    throw std::runtime_error("The browser's answer is too long.");
  }
  if (*result) throw std::runtime_error("The browser has ended.");
  return count;
}

Json DevToolsPipe::Call(const std::string& method, const Json& parameters,
                        const std::string& session, Deadline deadline) {
  const int64_t id = ++last_id_;
  Json message{{"id", id}, {"method", method}, {"params", parameters}};
  if (!session.empty()) message["sessionId"] = session;
  const std::string text = base::JsonText(message) + '\0';
  Await(deadline, [&](auto done) { asio::async_write(socket_, asio::buffer(text), done); });
  while (true) {
    const Json answer = Read(deadline);
    if (answer.value("id", Json()) != id) continue;
    const Json error = answer.value("error", Json());
    if (error.is_object()) {
      throw std::runtime_error("The browser refused " + method + ": " +
                               base::JsonText(error.value("message", Json())));
    }
    const Json result = answer.value("result", Json());
    return result.is_object() ? result : Json::object();
  }
}

Json DevToolsPipe::Read(Deadline deadline) {
  constexpr size_t kLongestMessage = size_t{256} << 20U;
  const size_t length = Await(deadline, [&](auto done) {
    asio::async_read_until(socket_, asio::dynamic_buffer(received_, kLongestMessage), '\0', done);
  });
  const std::string text = received_.substr(0, length - 1);
  received_.erase(0, length);
  try {
    Json message = base::ParseJson(text);
    if (message.is_object()) return message;
  } catch (const base::JsonError& error) {
    throw std::runtime_error(std::string("The browser sent what is no message: ") + error.what());
  }
  throw std::runtime_error("The browser sent what is no message.");
}

}  // namespace orvane::server
