// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/frame_sender.h"

#include <utility>

#include "base/frame.h"
#include "base/utf8.h"

namespace orvane::set_process {

namespace {

constexpr size_t kKeptBytes = size_t{256} << 10;
constexpr size_t kMostTold = 4096;  // bytes of a message's text

Json AnswerHead(int64_t id) { return {{"op", "answer"}, {"id", id}}; }

}  // namespace

void FrameSender::Send(const Json& head, std::string_view body) {
  const std::string text = base::JsonText(head);
  const std::lock_guard<std::mutex> lock(mutex_);
  if (is_gone_) return;
  frame_.clear();
  base::AppendFrame(text, body, &frame_);
  is_gone_ = !base::SendBytes(socket_, frame_);
  if (frame_.capacity() > kKeptBytes) frame_ = std::string();
}

void FrameSender::Answer(int64_t id, Json result) {
  Json head = AnswerHead(id);
  head["result"] = std::move(result);
  Send(head);
}

void FrameSender::AnswerText(int64_t id, std::string_view text, int64_t microseconds) {
  Json head = AnswerHead(id);
  if (microseconds >= 0) head["us"] = microseconds;
  Send(head, base::WellFormedUtf8(text));
}

void FrameSender::AnswerError(int64_t id, std::string_view error) {
  Json head = AnswerHead(id);
  head["error"] = {{"message", error}};
  Send(head);
}

void FrameSender::Event(std::string_view name, Json data) {
  Send({{"op", "event"}, {"name", name}, {"data", std::move(data)}});
}

void FrameSender::Handling(int64_t id, std::string_view what, int64_t context,
                           std::string_view name, std::string_view text) {
  Send({{"op", "handling"}, {"id", id}, {"what", what}, {"context", context}, {"name", name}},
       base::WellFormedUtf8(text.substr(0, kMostTold)));
}

void FrameSender::Handled() { Send({{"op", "handled"}}); }

}  // namespace orvane::set_process
