// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/process_history.h"

#include <utility>

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

void ProcessHistory::BeginRun() {
  head_ = nullptr;
  is_busy_ = false;
}

void ProcessHistory::BeginMessage(base::Frame handling) {
  head_ = std::move(handling.head);
  text_ = handling.body;
  is_busy_ = true;
  last_begin_ = std::chrono::steady_clock::now();
}

void ProcessHistory::EndRequest(uint64_t id) {
  if (is_busy_ && head_.value("id", uint64_t{0}) == id) is_busy_ = false;
}

Json ProcessHistory::Message() const {
  if (!is_busy_) return nullptr;
  return {{"what", head_.value("what", "")},
          {"context", head_.value("context", 0)},
          {"name", head_.value("name", "")},
          {"text", text_}};
}

std::string ProcessHistory::MessageWords() const {
  if (head_.is_null()) return "";
  const std::string command = CommandOf(text_);
  const std::string name = head_.value("name", "");
  const std::string words = head_.value("what", "") + (name.empty() ? "" : " " + name);
  return command.empty() ? words : words + " \"" + command + "\"";
}

std::string ProcessHistory::EndRun(const base::ProcessEnd& end, const std::string& reason,
                                   const std::string& output) {
  std::string words = reason.empty() ? Describe(end) : reason;
  if (!is_busy_ && !head_.is_null()) {
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
  return "the set process ended" + (is_busy_ ? " while it handled " + MessageWords() : "") + ": " +
         words;
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
