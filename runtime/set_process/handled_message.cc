// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/handled_message.h"

#include "base/json_object.h"
#include "base/json_writer.h"

namespace orvane::set_process {

namespace {

constexpr std::string_view kHead = R"({"op":"handling")";

}  // namespace

bool HandledMessage::IsToldBy(std::string_view frame) {
  return frame.substr(0, kHead.size()) == kHead;
}

void HandledMessage::Begin(std::string_view frame) {
  frame_ = frame;
  is_done_ = false;
  since_ = std::chrono::steady_clock::now();
}

void HandledMessage::Clear() { *this = HandledMessage(); }

uint64_t HandledMessage::request() const {
  const auto message = base::JsonObject::Parse(frame_);
  return message ? static_cast<uint64_t>(message->Integer("id").value_or(0)) : 0;
}

std::string HandledMessage::Json() const {
  const auto message = base::JsonObject::Parse(frame_);
  if (!message) return "null";
  base::JsonWriter json;
  for (const char* const name : {"what", "context", "name", "text"}) {
    const std::string_view value = message->Raw(name);
    json.Raw(name, value.empty() ? "null" : value);
  }
  return json.Take();
}

std::string HandledMessage::Words() const {
  const auto frame = base::JsonObject::Parse(frame_);
  if (!frame) return "";
  const std::string text = frame->Text("text").value_or("");
  const auto message = base::JsonObject::Parse(text);
  const std::string command = message ? message->Text("cmd").value_or("") : "";
  std::string words = frame->Text("what").value_or("") + " ";
  words += frame->Text("name").value_or("");
  return command.empty() ? words : words + " \"" + command + "\"";
}

}  // namespace orvane::set_process
