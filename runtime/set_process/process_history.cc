// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/process_history.h"

#include <utility>

#include "base/json_fields.h"
#include "base/wall_clock.h"

namespace orvane::set_process {

namespace {

constexpr size_t kMany = 3;
constexpr std::chrono::seconds kShortTime{5};
constexpr size_t kKept = 20;

// Of the library's messages; empty for others.
std::string CommandOf(const std::string& text) {
  const Json message = Json::parse(text, nullptr, /*allow_exceptions=*/false);
  if (!message.is_object()) return "";
  const auto command = message.find("cmd");
  return command != message.end() && command->is_string() ? command->get<std::string>() : "";
}

}  // namespace

void ProcessHistory::BeginRun() { in_hand_ = std::make_unique<MessageInHand>(); }

Json ProcessHistory::Message() const { return is_busy() ? base::ToJson(in_hand_->Last()) : Json(); }

std::string ProcessHistory::MessageWords() const {
  const auto message = in_hand_->Last();
  if (!message) return "";
  const std::string command = CommandOf(message->text);
  const std::string words = message->what + (message->name.empty() ? "" : " " + message->name);
  return command.empty() ? words : words + " \"" + command + "\"";
}

std::string ProcessHistory::EndRun(const base::ProcessEnd& end, const std::string& reason,
                                   const std::string& output) {
  std::string words = reason.empty() ? Describe(end) : reason;
  if (!is_busy() && in_hand_->Last()) {
    words += ", with no message in hand; the last one was " + MessageWords();
  }
  if (deaths_.size() == kKept) deaths_.erase(deaths_.begin());
  deaths_.push_back({std::chrono::steady_clock::now(),
                     {{"time_ns", base::NowNs()},
                      {"signal", end.signal},
                      {"exit", end.exit_code},
                      {"reason", words},
                      {"handling", Message()},
                      {"stderr", output}}});
  const std::string during = is_busy() ? " while it handled " + MessageWords() : "";
  in_hand_.reset();
  return "the set process ended" + during + ": " + words;
}

Json ProcessHistory::Deaths() const {
  Json list = Json::array();
  for (const Death& death : deaths_) list.push_back(death.description);
  return list;
}

bool ProcessHistory::AreDeathsTooMany() const {
  return deaths_.size() >= kMany &&
         deaths_.back().time - deaths_[deaths_.size() - kMany].time < kShortTime;
}

}  // namespace orvane::set_process
