// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/frame_sender.h"

#include <utility>

#include "base/frame.h"
#include "base/json_fields.h"
#include "base/utf8.h"

namespace orvane::set_process {

namespace {

constexpr size_t kKeptBytes = size_t{256} << 10;

struct AnswerHead {
  int64_t id = 0;
  std::optional<int64_t> microseconds;
  std::optional<Json> result;
  std::optional<Json> error;
};
template <class Map>
void MapFields(Map& map, AnswerHead& head) {
  map("op", "answer");
  map("id", head.id);
  map.Optional("us", head.microseconds);
  map.Optional("result", head.result);
  map.Optional("error", head.error);
}

}  // namespace

void FrameSender::Send(const Json& head, std::string_view body) {
  SendText(base::JsonText(head), body);
}

void FrameSender::SendText(std::string_view text, std::string_view body) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (is_gone_) return;
  frame_.clear();
  base::AppendFrame(text, body, &frame_);
  is_gone_ = !base::SendBytes(socket_, frame_);
  if (frame_.capacity() > kKeptBytes) frame_ = std::string();
}

void FrameSender::Answer(int64_t id, Json result) {
  SendText(base::TextOf(AnswerHead{id, {}, std::move(result), {}}));
}

void FrameSender::AnswerText(int64_t id, std::string_view text, int64_t microseconds) {
  AnswerHead head{id, {}, {}, {}};
  if (microseconds >= 0) head.microseconds = microseconds;
  SendText(base::TextOf(head), base::WellFormedUtf8(text));
}

void FrameSender::AnswerError(int64_t id, std::string_view error) {
  SendText(base::TextOf(AnswerHead{id, {}, {}, Json{{"message", error}}}));
}

void FrameSender::Event(std::string_view name, Json data) {
  Send({{"op", "event"}, {"name", name}, {"data", std::move(data)}});
}

}  // namespace orvane::set_process
