// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/session_file.h"

#include <algorithm>
#include <utility>

#include "base/json_fields.h"
#include "cli/exit_code.h"
#include "cli/output.h"

namespace orvane::cli {

namespace {

[[noreturn]] void Refuse(const std::string& path, const std::string& why) {
  throw CommandError(path + " is no recorded session: " + why +
                     " The simulator's Messages panel exports one.");
}

Json Member(const Json& of, const char* name) { return of.value(name, Json()); }

int64_t WholeNumber(const Json& json, int64_t otherwise) {
  int64_t number = otherwise;
  base::fields::ReadInteger(json, &number);
  return number;
}

RecordedMessage ReadMessage(const Json& json, size_t place) {
  RecordedMessage message;
  message.number = WholeNumber(Member(json, "seq"), static_cast<int64_t>(place));
  message.context = WholeNumber(Member(json, "context"), 0);
  message.to_page = Member(json, "direction") == "toPage";
  message.kind = TextOf(Member(json, "kind"));
  message.peer = TextOf(Member(json, "peer"));
  message.payload = TextOf(Member(json, "payload"));
  const Json time = Member(json, "time_ns");
  if (time.is_number()) message.time_ns = time.get<double>();
  const Json reply = Member(json, "reply");
  if (!reply.is_null()) message.reply = TextOf(reply);
  message.failed = !Member(json, "error").is_null();
  return message;
}

Json ReadSession(const std::string& path) {
  const std::string text = ReadInput(path, "file");
  if (text.empty()) Refuse(path, "it is empty.");
  try {
    Json json = base::ParseJson(text);
    if (!json.is_object() || !Member(json, "orvane").is_number()) {
      Refuse(path, "the member \"orvane\" is missing.");
    }
    if (json["orvane"] != 1) Refuse(path, "it is of a later version.");
    if (!Member(json, "records").is_array()) Refuse(path, "\"records\" is no array.");
    return json;
  } catch (const base::JsonError& error) {
    Refuse(path, error.what());
  }
}

}  // namespace

SessionFile ReadSessionFile(const std::string& path) {
  const Json json = ReadSession(path);
  SessionFile session;
  if (Member(json, "app").is_object()) session.app = json["app"];
  if (Member(json, "profile").is_string()) session.profile = json["profile"];
  for (const Json& record : json["records"]) {
    if (!record.is_object()) Refuse(path, "a record is no object.");
    session.messages.push_back(ReadMessage(record, session.messages.size() + 1));
  }
  std::stable_sort(
      session.messages.begin(), session.messages.end(),
      [](const RecordedMessage& a, const RecordedMessage& b) { return a.time_ns < b.time_ns; });
  return session;
}

}  // namespace orvane::cli
