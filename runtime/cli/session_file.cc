// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/session_file.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>
#include <utility>

#include "cli/exit_code.h"
#include "cli/json_read.h"
#include "extensions/bounded_json.h"

namespace orvane::cli {

using picojson::value;

namespace {

std::string ReadText(const std::string& path) {
  std::ostringstream text;
  if (path == "-") {
    text << std::cin.rdbuf();
    return text.str();
  }
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw UsageError(path + ": there is no such file, or it may not be read.");
  text << stream.rdbuf();
  return text.str();
}

[[noreturn]] void Refuse(const std::string& path, const std::string& why) {
  throw UsageError(path + " is no recorded session: " + why +
                   ". The simulator's Messages panel exports one.");
}

// Texts as they are, nothing for null, everything else as JSON.
std::string TextOf(const value& json) {
  if (json.is<picojson::null>()) return "";
  return json.is<std::string>() ? json.get<std::string>() : json.serialize();
}

RecordedMessage ReadMessage(const value& json, size_t place) {
  RecordedMessage message;
  message.number = WholeNumber(json.get("seq")).value_or(static_cast<int64_t>(place));
  message.context = WholeNumber(json.get("context")).value_or(0);
  message.to_page = TextOf(json.get("direction")) == "toPage";
  message.kind = TextOf(json.get("kind"));
  message.peer = TextOf(json.get("peer"));
  message.payload = TextOf(json.get("payload"));
  const value& time = json.get("time_ns");
  if (time.is<double>()) message.time_ns = time.get<double>();
  const value& reply = json.get("reply");
  if (!reply.is<picojson::null>()) message.reply = TextOf(reply);
  message.failed = !json.get("error").is<picojson::null>();
  return message;
}

}  // namespace

SessionFile ReadSessionFile(const std::string& path) {
  std::string error;
  const std::string text = ReadText(path);
  const std::optional<value> json = extensions::ParseBoundedJson(text, &error);
  if (!json) Refuse(path, text.empty() ? "it is empty" : error);
  if (!json->is<picojson::object>() || !json->get("orvane").is<double>()) {
    Refuse(path, "the member \"orvane\" is missing");
  }
  if (json->get("orvane").get<double>() != 1) Refuse(path, "it is of a later version");
  if (!json->get("records").is<picojson::array>()) Refuse(path, "\"records\" is no array");
  SessionFile session;
  if (json->get("app").is<picojson::object>())
    session.app = json->get("app").get<picojson::object>();
  if (json->get("profile").is<std::string>()) session.profile = TextOf(json->get("profile"));
  for (const value& record : json->get("records").get<picojson::array>()) {
    if (!record.is<picojson::object>()) Refuse(path, "a record is no object");
    session.messages.push_back(ReadMessage(record, session.messages.size() + 1));
  }
  std::stable_sort(
      session.messages.begin(), session.messages.end(),
      [](const RecordedMessage& a, const RecordedMessage& b) { return a.time_ns < b.time_ns; });
  return session;
}

}  // namespace orvane::cli
