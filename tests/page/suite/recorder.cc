// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "suite/recorder.h"

#include <picojson.h>

namespace orvane::page {
namespace {

using Json = picojson::value;

std::string KindName(TraceKind kind) {
  static const char* const kNames[] = {"native sync",   "native post",  "native binary",
                                       "runtime plain", "runtime sync", "runtime async"};
  return kNames[static_cast<int>(kind)];
}

}  // namespace

void Recorder::DefineFor(Page& page) {
  page.DefineFunction("testing.consoleLines", [this](const std::string&) {
    picojson::array lines;
    for (const std::string& line : console_lines_) lines.emplace_back(line);
    return Json(lines).serialize();
  });
  page.DefineFunction("testing.messages", [this](const std::string&) {
    std::string json = "[";
    for (const std::string& message : messages_) json += (json.size() > 1 ? "," : "") + message;
    return json + "]";
  });
  page.DefineFunction("testing.forget", [this](const std::string&) {
    console_lines_.clear();
    messages_.clear();
    return std::string();
  });
}

void Recorder::OnConsole(ConsoleLevel, const std::string& text) { console_lines_.push_back(text); }

void Recorder::OnTrace(const TracedMessage& record) {
  const bool sent = record.direction == TraceDirection::kFromPage;
  const picojson::array message{Json((sent ? "> " : "< ") + KindName(record.kind)),
                                Json(std::string(record.peer)), Json(std::string(record.payload))};
  messages_.push_back(Json(message).serialize());
}

}  // namespace orvane::page
