// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/replayer.h"

#include <algorithm>

#include "cli/json_read.h"
#include "extensions/bounded_json.h"

namespace orvane::cli {

using picojson::object;
using picojson::value;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

// Null for a text that is no JSON object.
value ParseObject(const std::string& text) {
  std::string error;
  const std::optional<value> json = extensions::ParseBoundedJson(text, &error);
  return json && json->is<object>() ? *json : value();
}

std::string CommandOf(const std::string& payload) {
  const value json = ParseObject(payload);
  return json.is<object>() && json.get("cmd").is<std::string>() ? json.get("cmd").to_str() : "";
}

std::optional<int64_t> CallbackOf(const value& of) { return WholeNumber(Member(of, "callbackId")); }

// What such a command answers is never twice the same.
bool IsVolatile(const std::string& command) {
  return command == "OrvaneManager_getUuid" || command == "OrvaneManager_getSystemStat";
}

value Text(const std::string& text) { return value(text); }

// The request that the server would have sent for it; empty for a kind that is not known.
std::optional<object> RequestOf(const RecordedMessage& message) {
  object request{{"context", value(static_cast<double>(message.context))}};
  const auto with = [&](std::initializer_list<std::pair<const char*, value>> members) {
    for (const auto& [name, member] : members) request[name] = member;
    return request;
  };
  const std::string& kind = message.kind;
  if (kind == "nativeSync" || kind == "nativePost") {
    return with({{"op", Text(kind == "nativeSync" ? "sync" : "post")},
                 {"extension", Text(message.peer)},
                 {"text", Text(message.payload)}});
  }
  if (kind == "nativeBinary") {
    return with({{"op", Text("post")},
                 {"extension", Text(message.peer)},
                 {"text", Text(message.payload)},
                 {"binary", value(true)}});
  }
  if (kind.rfind("runtime", 0) == 0) {
    std::string way = kind.substr(7);
    std::transform(way.begin(), way.end(), way.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return with({{"op", Text("runtime")},
                 {"kind", Text(way)},
                 {"uri", Text(message.peer)},
                 {"text", Text(message.payload)}});
  }
  if (kind == "widget") {
    std::string error;
    const auto arguments = extensions::ParseBoundedJson(message.payload, &error);
    const size_t dot = message.peer.rfind('.');
    return with({{"op", Text("widget")},
                 {"call", Text(message.peer.substr(dot == std::string::npos ? 0 : dot + 1))},
                 {"args", arguments ? *arguments : value(picojson::array())}});
  }
  if (kind == "privilege") {
    const bool in_payload = message.payload.find("://") != std::string::npos;
    return with({{"op", Text("privilege")},
                 {"privilege", Text(in_payload ? message.payload : message.peer)}});
  }
  if (kind == "create") return with({{"op", Text("create")}, {"extension", Text(message.peer)}});
  if (kind == "close") return with({{"op", Text("close")}});
  return std::nullopt;
}

}  // namespace

Replayer::Replayer(LibraryClient& client, Comparison comparison, milliseconds patience)
    : client_(client), comparison_(comparison), patience_(patience) {}

std::vector<Difference> Replayer::Replay(const std::vector<RecordedMessage>& messages) {
  for (const RecordedMessage& message : messages) {
    try {
      ReplayOne(message);
    } catch (const LibraryDied& died) {
      differences_.push_back({message, "an answer", died.what()});
      return std::move(differences_);
    }
  }
  ReportUnexpected();
  return std::move(differences_);
}

void Replayer::ReplayOne(const RecordedMessage& message) {
  if (message.to_page) return ComparePosted(message);
  const std::optional<object> request = RequestOf(message);
  if (!request) {
    differences_.push_back({message, "a message", "nothing: this command knows no such kind"});
    return;
  }
  NoteCallback(message);
  if (message.kind == "nativePost" || message.kind == "nativeBinary") return client_.Send(*request);
  CompareReply(message, client_.Call(*request));
}

void Replayer::NoteCallback(const RecordedMessage& message) {
  const value json = ParseObject(message.payload);
  const auto callback = json.is<object>() ? CallbackOf(json.get("args")) : std::nullopt;
  if (callback) commands_[{message.context, *callback}] = CommandOf(message.payload);
}

void Replayer::CompareReply(const RecordedMessage& message, const value& answer) {
  const value& error = answer.get("error");
  const bool failed = !error.is<picojson::null>();
  const std::string replayed =
      failed ? "an error: " + error.to_str() : answer.get("result").to_str();
  const std::string recorded = message.failed ? "an error" : message.reply.value_or("");
  if (message.failed && failed) return;
  if (message.failed == failed && !message.reply) return;  // nothing was recorded to compare with
  if (message.failed == failed && IsSame(recorded, replayed, CommandOf(message.payload))) return;
  differences_.push_back({message, recorded, replayed});
}

void Replayer::ComparePosted(const RecordedMessage& message) {
  const auto callback = CallbackOf(ParseObject(message.payload));
  const std::optional<PostedMessage> posted = TakePosted(message);
  if (!posted) {
    differences_.push_back({message, message.payload, "nothing came"});
    return;
  }
  const std::string command = callback ? commands_[{message.context, *callback}] : std::string();
  if (IsSame(message.payload, posted->text, command)) return;
  differences_.push_back({message, message.payload, posted->text});
}

// Waits for it as long as patience is left.
std::optional<PostedMessage> Replayer::TakePosted(const RecordedMessage& message) {
  const auto wanted = CallbackOf(ParseObject(message.payload));
  std::list<PostedMessage>& posted = client_.posted();
  while (true) {
    const auto found =
        std::find_if(posted.begin(), posted.end(), [&](const PostedMessage& candidate) {
          return candidate.context == message.context && candidate.extension == message.peer &&
                 CallbackOf(ParseObject(candidate.text)) == wanted;
        });
    if (found != posted.end()) {
      PostedMessage taken = std::move(*found);
      posted.erase(found);
      return taken;
    }
    const auto begin = steady_clock::now();
    const bool came = client_.WaitForPosted(begin + patience_);
    const auto waited = std::chrono::duration_cast<milliseconds>(steady_clock::now() - begin);
    patience_ = std::max(patience_ - waited, milliseconds(0));
    if (!came) return std::nullopt;
  }
}

void Replayer::ReportUnexpected() {
  for (const PostedMessage& posted : client_.posted()) {
    RecordedMessage message;
    message.context = posted.context;
    message.to_page = true;
    message.kind = "nativePost";
    message.peer = posted.extension;
    differences_.push_back({message, "nothing", posted.text});
  }
}

bool Replayer::IsSame(const std::string& recorded, const std::string& replayed,
                      const std::string& command) const {
  if (recorded == replayed) return true;
  value was = ParseObject(recorded);
  value is = ParseObject(replayed);
  if (!was.is<object>() || !is.is<object>()) return false;
  if (comparison_ == Comparison::kForm && IsVolatile(command)) {
    was.get<object>().erase("result");
    is.get<object>().erase("result");
  }
  return was == is;
}

}  // namespace orvane::cli
