// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/handled_message.h"

namespace orvane::set_process {

namespace {

// Of the library's messages; empty for others.
std::string CommandOf(const std::string& text) {
  try {
    const Json message = base::ParseJson(text);
    const auto command = message.find("cmd");
    return command != message.end() && command->is_string() ? command->get<std::string>() : "";
  } catch (const base::JsonError&) {
    return "";
  }
}

}  // namespace

void HandledMessage::Begin(const base::Frame& frame) {
  head_ = frame.head;
  text_ = frame.body;
  is_done_ = false;
  since_ = std::chrono::steady_clock::now();
}

void HandledMessage::Clear() { *this = HandledMessage(); }

uint64_t HandledMessage::request() const { return is_known() ? head_.value("id", uint64_t{0}) : 0; }

Json HandledMessage::Description() const {
  return {{"what", head_.value("what", "")},
          {"context", head_.value("context", 0)},
          {"name", head_.value("name", "")},
          {"text", text_}};
}

std::string HandledMessage::Words() const {
  const std::string command = CommandOf(text_);
  const std::string words = head_.value("what", "") + " " + head_.value("name", "");
  return command.empty() ? words : words + " \"" + command + "\"";
}

}  // namespace orvane::set_process
