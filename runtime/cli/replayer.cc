// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/replayer.h"

#include <algorithm>
#include <utility>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/predicate.hpp>

#include "base/base64.h"
#include "base/json_fields.h"
#include "cli/exit_code.h"
#include "cli/output.h"

namespace orvane::cli {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

// An empty object for a text that is none.
Json ParseObject(const std::string& text) {
  try {
    Json json = base::ParseJson(text);
    return json.is_object() ? json : Json::object();
  } catch (const base::JsonError&) {
    return Json::object();
  }
}

std::string CommandOf(const std::string& payload) {
  const Json command = ParseObject(payload).value("cmd", Json());
  return command.is_string() ? command.get<std::string>() : "";
}

std::optional<int64_t> CallbackOf(const Json& of) {
  int64_t callback = 0;
  const bool is_number =
      of.is_object() && base::fields::ReadInteger(of.value("callbackId", Json()), &callback);
  return is_number ? std::optional(callback) : std::nullopt;
}

// What such a command answers is never twice the same.
bool IsVolatile(const std::string& command) {
  return command == "OrvaneManager_getUuid" || command == "OrvaneManager_getSystemStat";
}

struct SetRequest {
  Json head;
  std::string body;
};

// The request that the server would have sent for it; empty for a kind that is not known.
std::optional<SetRequest> RequestOf(const RecordedMessage& message) {
  const std::string& kind = message.kind;
  const std::string& peer = message.peer;
  const std::string& payload = message.payload;
  if (kind == "nativeSync") return SetRequest{{{"op", "sync"}, {"extension", peer}}, payload};
  if (kind == "nativePost") return SetRequest{{{"op", "post"}, {"extension", peer}}, payload};
  if (kind == "nativeBinary") {
    return SetRequest{{{"op", "post"}, {"extension", peer}, {"binary", true}},
                      base::DecodeBase64(payload).value_or("")};
  }
  if (boost::starts_with(kind, "runtime")) {  // "runtimeSync" is the way "sync"
    const std::string way = boost::to_lower_copy(kind.substr(std::string_view("runtime").size()));
    return SetRequest{{{"op", "runtime"}, {"kind", way}, {"uri", peer}}, payload};
  }
  if (kind == "widget") {
    return SetRequest{{{"op", "widget"}, {"call", peer.substr(peer.rfind('.') + 1)}}, payload};
  }
  if (kind == "privilege") {
    const bool in_payload = payload.find("://") != std::string::npos;
    return SetRequest{{{"op", "privilege"}, {"privilege", in_payload ? payload : peer}}, ""};
  }
  if (kind == "create") return SetRequest{{{"op", "create"}, {"extension", peer}}, ""};
  if (kind == "close") return SetRequest{{{"op", "close"}}, ""};
  return std::nullopt;
}

}  // namespace

Replayer::Replayer(set_process::SetProcessOptions process, Comparison comparison,
                   milliseconds patience)
    : process_(loop_, *this, std::move(process)), comparison_(comparison), patience_(patience) {
  process_.Start();
  while (!is_started_ && failure_.empty()) loop_.run_one();
  if (!is_started_) throw CommandError(failure_);
}

Replayer::~Replayer() {
  bool is_over = false;
  process_.Stop([&is_over] { is_over = true; });
  while (!is_over) loop_.run_one();
}

void Replayer::OnPosted(const set_process::Posted& posted) {
  RecordedMessage message;
  message.context = posted.context;
  message.to_page = true;
  message.kind = "nativePost";
  message.peer = posted.extension;
  message.payload = posted.is_binary ? base::EncodeBase64(posted.body) : std::string(posted.body);
  posted_.push_back(std::move(message));
}

// The process answers every request in time, or fails it.
Replayer::Reply Replayer::Ask(Json head, const std::string& body) {
  std::optional<Reply> reply;
  process_.Request(std::move(head), body, [&reply](const set_process::Answer& answer) {
    const bool in_head = answer.head.contains("result");
    reply = {in_head ? TextOf(answer.result()) : std::string(answer.body), answer.error(),
             answer.failure};
  });
  while (!reply) loop_.run_one();
  return *reply;
}

std::vector<Difference> Replayer::Replay(const std::vector<RecordedMessage>& messages) {
  for (const RecordedMessage& message : messages) {
    if (ReplayOne(message)) continue;
    differences_.push_back({message, "an answer", failure_});
    return std::move(differences_);
  }
  ReportUnexpected();
  return std::move(differences_);
}

bool Replayer::ReplayOne(const RecordedMessage& message) {
  if (message.to_page) {
    ComparePosted(message);
    return failure_.empty();
  }
  std::optional<SetRequest> request = RequestOf(message);
  if (!request) {
    differences_.push_back({message, "a message", "nothing: this command knows no such kind"});
    return true;
  }
  NoteCallback(message);
  request->head["context"] = message.context;
  if (request->head["op"] == "post") {
    process_.Post(request->head, request->body);
    loop_.poll();
    return failure_.empty();
  }
  const Reply reply = Ask(std::move(request->head), request->body);
  failure_ = reply.failure;
  if (failure_.empty()) CompareReply(message, reply);
  return failure_.empty();
}

void Replayer::NoteCallback(const RecordedMessage& message) {
  const auto callback = CallbackOf(ParseObject(message.payload).value("args", Json()));
  if (callback) commands_[{message.context, *callback}] = CommandOf(message.payload);
}

void Replayer::CompareReply(const RecordedMessage& message, const Reply& reply) {
  const bool failed = !reply.error.empty();
  const std::string replayed = failed ? "an error: " + reply.error : reply.text;
  const std::string recorded = message.failed ? "an error" : message.reply.value_or("");
  if (message.failed && failed) return;
  if (message.failed == failed && !message.reply) return;  // nothing was recorded to compare with
  if (message.failed == failed && IsSame(recorded, replayed, CommandOf(message.payload))) return;
  differences_.push_back({message, recorded, replayed});
}

void Replayer::ComparePosted(const RecordedMessage& message) {
  const auto callback = CallbackOf(ParseObject(message.payload));
  const std::optional<RecordedMessage> posted = TakePosted(message);
  if (!posted) {
    if (failure_.empty()) differences_.push_back({message, message.payload, "nothing came"});
    return;
  }
  const std::string command = callback ? commands_[{message.context, *callback}] : std::string();
  if (IsSame(message.payload, posted->payload, command)) return;
  differences_.push_back({message, message.payload, posted->payload});
}

// Waits for it as long as patience is left.
std::optional<RecordedMessage> Replayer::TakePosted(const RecordedMessage& message) {
  const auto wanted = CallbackOf(ParseObject(message.payload));
  do {
    const auto found =
        std::find_if(posted_.begin(), posted_.end(), [&](const RecordedMessage& candidate) {
          return candidate.context == message.context && candidate.peer == message.peer &&
                 CallbackOf(ParseObject(candidate.payload)) == wanted;
        });
    if (found == posted_.end()) continue;
    RecordedMessage taken = std::move(*found);
    posted_.erase(found);
    return taken;
  } while (WaitForPosted());
  return std::nullopt;
}

bool Replayer::WaitForPosted() {
  const size_t before = posted_.size();
  const auto begin = steady_clock::now();
  const auto until = begin + patience_;
  while (posted_.size() == before && failure_.empty() && loop_.run_one_until(until) != 0) {
  }
  const auto waited = std::chrono::duration_cast<milliseconds>(steady_clock::now() - begin);
  patience_ = std::max(patience_ - waited, milliseconds(0));
  return posted_.size() != before;
}

void Replayer::ReportUnexpected() {
  for (RecordedMessage& posted : posted_) {
    const std::string text = std::exchange(posted.payload, "");
    differences_.push_back({std::move(posted), "nothing", text});
  }
}

bool Replayer::IsSame(const std::string& recorded, const std::string& replayed,
                      const std::string& command) const {
  if (recorded == replayed) return true;
  Json was = ParseObject(recorded);
  Json is = ParseObject(replayed);
  if (was.empty() || is.empty()) return false;
  if (comparison_ == Comparison::kForm && IsVolatile(command)) {
    was.erase("result");
    is.erase("result");
  }
  return was == is;
}

}  // namespace orvane::cli
