// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "library_process/outbox.h"

#include "frames/frame.h"
#include "frames/json_text.h"

namespace orvane::library_process {

namespace {

constexpr size_t kKeptBytes = size_t{256} << 10;

std::string AnswerHead(int64_t id) { return R"({"op":"answer","id":)" + std::to_string(id); }

}  // namespace

void Outbox::Send(std::string_view body) {
  if (!frames::IsWellFormed(body)) return Send(frames::WellFormed(body));
  const std::lock_guard<std::mutex> lock(mutex_);
  if (is_gone_) return;
  frame_.clear();
  frames::AppendFrame(body, &frame_);
  is_gone_ = !frames::SendBytes(socket_, frame_);
  if (frame_.capacity() > kKeptBytes) frame_ = std::string();
}

void Outbox::Answer(int64_t id, const picojson::value& result) {
  Send(AnswerHead(id) + R"(,"result":)" + result.serialize() + "}");
}

void Outbox::AnswerText(int64_t id, std::string_view result, int64_t microseconds) {
  std::string body = AnswerHead(id);
  body.append(R"(,"us":)").append(std::to_string(microseconds)).append(R"(,"result":)");
  frames::AppendJsonString(result, &body);
  body.push_back('}');
  Send(body);
}

void Outbox::AnswerError(int64_t id, std::string_view error) {
  std::string body = AnswerHead(id) + R"(,"error":)";
  frames::AppendJsonString(error, &body);
  body.push_back('}');
  Send(body);
}

void Outbox::Event(std::string_view name, const picojson::value& data) {
  std::string body = R"({"op":"event","name":)";
  frames::AppendJsonString(name, &body);
  Send(body + R"(,"data":)" + data.serialize() + "}");
}

}  // namespace orvane::library_process
