// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

#include "base/json.h"

namespace orvane::set_process {

// The way to the server process. Each frame is written whole, at once and in the order of the
// calls, with nothing kept back: what was sent before the process died arrives. A caller waits
// while the socket is full. When the server is gone nothing more is sent, and nothing is said about
// it here: whoever reads the socket learns it. Any thread. The socket is borrowed.
class FrameSender {
 public:
  explicit FrameSender(int socket) : socket_(socket) {}
  ~FrameSender() = default;
  FrameSender(const FrameSender&) = delete;
  FrameSender& operator=(const FrameSender&) = delete;

  // A frame of a JSON object and any bytes. Throws base::FrameError for one that is too long.
  void Send(const Json& head, std::string_view body = {});

  // Answers to the request `id`.
  void Answer(int64_t id, Json result);
  // The text of an answer to a page; `microseconds` is what it took, or negative.
  void AnswerText(int64_t id, std::string_view text, int64_t microseconds = -1);
  void AnswerError(int64_t id, std::string_view error);

  void Event(std::string_view name, Json data);

 private:
  void SendText(std::string_view text, std::string_view body = {});

  const int socket_;
  std::mutex mutex_;
  std::string frame_;     // guarded by mutex_; kept for its memory
  bool is_gone_ = false;  // guarded by mutex_
};

}  // namespace orvane::set_process
