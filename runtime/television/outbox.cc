// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/outbox.h"

#include "base/frame.h"
#include "base/json_text.h"

namespace orvane::television {

namespace {

constexpr size_t kKeptBytes = size_t{256} << 10;
constexpr size_t kMostTold = 4096;  // bytes of a message's text

std::string AnswerHead(int64_t id) { return R"({"op":"answer","id":)" + std::to_string(id); }

}  // namespace

void Outbox::Send(std::string_view head, std::string_view body) {
  if (!base::IsWellFormed(head)) return Send(base::WellFormed(head), body);
  const std::lock_guard<std::mutex> lock(mutex_);
  if (is_gone_) return;
  frame_.clear();
  base::AppendFrame(head, body, &frame_);
  is_gone_ = !base::SendBytes(socket_, frame_);
  if (frame_.capacity() > kKeptBytes) frame_ = std::string();
}

void Outbox::Answer(int64_t id, const Json& result) {
  Send(AnswerHead(id) + R"(,"result":)" + base::JsonText(result) + "}");
}

void Outbox::AnswerText(int64_t id, std::string_view text, int64_t microseconds) {
  std::string head = AnswerHead(id);
  if (microseconds >= 0) head.append(R"(,"us":)").append(std::to_string(microseconds));
  Send(head + "}", base::WellFormed(text));
}

void Outbox::AnswerError(int64_t id, std::string_view error) {
  std::string head = AnswerHead(id) + R"(,"error":{"message":)";
  base::AppendJsonString(error, &head);
  Send(head + "}}");
}

void Outbox::Event(std::string_view name, const Json& data) {
  std::string body = R"({"op":"event","name":)";
  base::AppendJsonString(name, &body);
  Send(body + R"(,"data":)" + base::JsonText(data) + "}");
}

void Outbox::Handling(int64_t id, std::string_view what, int64_t context, std::string_view name,
                      std::string_view text) {
  std::string head = R"({"op":"handling","id":)" + std::to_string(id);
  head.append(R"(,"what":")").append(what);
  head.append(R"(","context":)").append(std::to_string(context)).append(R"(,"name":)");
  base::AppendJsonString(name, &head);
  Send(head + "}", base::WellFormed(text.substr(0, kMostTold)));
}

void Outbox::Handled() { Send(R"({"op":"handled"})"); }

}  // namespace orvane::television
