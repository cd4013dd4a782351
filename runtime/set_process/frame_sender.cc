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
constexpr size_t kMostTold = 4096;  // bytes of a message's text

struct AnswerHead {
  int64_t id;
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

struct HandlingHead {
  int64_t id;
  std::string_view what;
  int64_t context;
  std::string_view name;
};
template <class Map>
void MapFields(Map& map, HandlingHead& head) {
  map("op", "handling");
  map("id", head.id);
  map("what", head.what);
  map("context", head.context);
  map("name", head.name);
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

void FrameSender::Handling(int64_t id, std::string_view what, int64_t context,
                           std::string_view name, std::string_view text) {
  SendText(base::TextOf(HandlingHead{id, what, context, name}),
           base::WellFormedUtf8(text.substr(0, kMostTold)));
}

void FrameSender::Handled() { Send({{"op", "handled"}}); }

}  // namespace orvane::set_process
