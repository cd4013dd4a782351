// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/page_messages.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/base64.h"
#include "base/json_writer.h"
#include "base/wall_clock.h"

namespace orvane::server {

using std::chrono::steady_clock;

namespace {

constexpr std::string_view kFromPage = "fromPage";
constexpr std::string_view kBinary = R"(,"binary":true)";  // the text is base64

std::string_view PostKind(bool is_binary) { return is_binary ? "nativeBinary" : "nativePost"; }

std::string AnswerMembers(int64_t id, std::string_view result, int64_t microseconds) {
  std::string members = R"("type":"answer","id":)" + std::to_string(id) + R"(,"result":)";
  members += result;
  if (microseconds >= 0) members += R"(,"us":)" + std::to_string(microseconds);
  return members;
}

std::string ErrorMembers(int64_t id, std::string_view error_json) {
  std::string members = R"("type":"answer","id":)" + std::to_string(id) + R"(,"error":)";
  members += error_json;
  return members;
}

// What a call was, for the sentence that says that it failed.
std::string NameOf(const std::string& peer, const std::string& payload) {
  if (peer.empty() || peer[0] != '"') return "The call";
  std::string name = base::DecodeJsonString(peer);
  if (payload.empty() || payload[0] != '"') return name;
  const std::string text = base::DecodeJsonString(payload);
  const auto message = base::JsonObject::Parse(text);
  const auto command = message ? message->Text("cmd") : std::nullopt;
  return command ? name + " " + *command : name;
}

// The head of a request, with the texts of the message that are handed on in it.
Json HeadOf(const char* operation, int64_t context, const base::JsonObject& fields,
            std::initializer_list<const char*> names) {
  Json head{{"op", operation}, {"context", context}};
  for (const char* const name : names) head[name] = fields.Text(name).value_or("");
  return head;
}

// The answer's value as JSON: that of its head, or else its text.
std::string ResultOf(const set_process::Answer& answer) {
  const auto result = answer.head.find("result");
  return result != answer.head.end() ? base::JsonText(*result)
                                     : base::JsonText(std::string(answer.body));
}

}  // namespace

struct PageMessages::Message {
  PageContext& context;
  const base::JsonObject& fields;
  std::string_view type;  // JSON
  int64_t id;
  const Reply& reply;

  void Refuse(std::string_view why) const { reply(ErrorMembers(id, base::JsonText(why))); }
  bool HasTexts(std::initializer_list<std::string_view> names) const {
    return std::none_of(names.begin(), names.end(),
                        [this](std::string_view name) { return fields.RawText(name).empty(); });
  }
  TraceRecord Record(std::string_view kind, std::string_view peer, std::string_view payload) const {
    TraceRecord record;
    record.context = context.id();
    record.direction = kFromPage;
    record.kind = kind;
    record.peer = peer;
    record.payload = payload;
    return record;
  }
};

void PageMessages::HandleSocketMessage(PageContext& context, std::string_view text) {
  const auto fields = base::JsonObject::Parse(text);
  if (!fields) return;
  const std::string_view type = fields->RawText("type");
  const auto id = fields->Integer("id");
  if (!id) return HandleReport(context, type, *fields);
  if (!context.Receive(*id)) return;  // it came before the socket was lost
  if (type == R"("post")") {
    const Reply nobody = [](const std::string&) {};
    return Post({context, *fields, type, *id, nobody});
  }
  const Reply reply = [weak = context.weak_from_this()](const std::string& members) {
    if (const auto self = weak.lock()) self->Deliver(members);
  };
  Dispatch({context, *fields, type, *id, reply});
}

void PageMessages::HandleRequest(PageContext& context, std::string_view text, const Reply& reply) {
  const auto fields = base::JsonObject::Parse(text);
  const auto id = fields ? fields->Integer("id") : std::nullopt;
  if (!id) return reply(ErrorMembers(0, base::JsonText("A message is an object with an id.")));
  const Message message{context, *fields, fields->RawText("type"), *id, reply};
  if (!context.Receive(*id)) return message.Refuse("A message with this id has come before.");
  if (message.type == R"("post")") Post(message);
  Dispatch(message);
}

void PageMessages::Dispatch(const Message& message) {
  const std::string_view type = message.type;
  const base::JsonObject& fields = message.fields;
  const int64_t context = message.context.id();
  if (type == R"("sync")" && message.HasTexts({"extension", "text"})) {
    return Ask(message, HeadOf("sync", context, fields, {"extension"}), *fields.Text("text"),
               message.Record("nativeSync", fields.Raw("extension"), fields.Raw("text")));
  }
  if (type == R"("create")" && message.HasTexts({"extension"})) {
    return Ask(message, HeadOf("create", context, fields, {"extension"}), "",
               message.Record("create", fields.Raw("extension"), "null"));
  }
  if (type == R"("privilege")" && message.HasTexts({"privilege"})) {
    return Ask(message, HeadOf("privilege", context, fields, {"privilege"}), "",
               message.Record("privilege", fields.Raw("privilege"), "null"));
  }
  if (type == R"("runtime")" && message.HasTexts({"kind", "uri", "text"})) return Runtime(message);
  if (type == R"("widget")" && message.HasTexts({"call"})) return Widget(message);
  if (type == R"("echo")" || type == R"("post")") {
    return message.reply(AnswerMembers(message.id, "null", -1));
  }
  message.Refuse("A message of this form is known to nobody.");
}

void PageMessages::Runtime(const Message& message) {
  const std::string_view kind = message.fields.Raw("kind");
  std::string_view traced = "runtimePlain";
  if (kind == R"("sync")") traced = "runtimeSync";
  if (kind == R"("async")") traced = "runtimeAsync";
  Ask(message, HeadOf("runtime", message.context.id(), message.fields, {"kind", "uri"}),
      *message.fields.Text("text"),
      message.Record(traced, message.fields.Raw("uri"), message.fields.Raw("text")));
}

void PageMessages::Widget(const Message& message) {
  if (!base::JsonElements(message.fields.Raw("args"))) {
    return message.Refuse("The arguments of a call are an array.");
  }
  Ask(message, HeadOf("widget", message.context.id(), message.fields, {"call"}),
      std::string(message.fields.Raw("args")),
      message.Record("widget", message.fields.Raw("call"), message.fields.Raw("args")));
}

// The record borrows from the message, which is gone when the answer comes.
void PageMessages::Ask(const Message& message, Json head, const std::string& body,
                       TraceRecord record) {
  const bool needs_instance = head["op"] == "create" || head["op"] == "sync";
  record.time_ns = base::NowNs();
  const auto begin = steady_clock::now();
  set_process_.Request(
      std::move(head), body,
      [this, needs_instance, reply = message.reply, id = message.id, record,
       peer = std::string(record.peer), payload = std::string(record.payload),
       begin](const set_process::Answer& answer) mutable {
        if (needs_instance && answer.ok()) contexts_.NoteInstance(record.context, peer);
        std::string failure;
        std::string result;
        if (answer.ok()) {
          result = ResultOf(answer);
        } else {
          const std::string refused = answer.error();
          failure = base::JsonText(
              refused.empty() ? NameOf(peer, payload) + ": " + answer.failure + "." : refused);
        }
        const auto turn = steady_clock::now() - begin;
        record.microseconds =
            answer.microseconds() >= 0
                ? answer.microseconds()
                : std::chrono::duration_cast<std::chrono::microseconds>(turn).count();
        reply(answer.ok() ? AnswerMembers(id, result, answer.microseconds())
                          : ErrorMembers(id, failure));
        record.peer = peer;
        record.payload = payload;
        record.reply = result;
        record.error = failure;
        journal_.AddTrace(record);
      });
}

void PageMessages::Post(const Message& message) {
  if (!message.HasTexts({"extension", "text"})) return;
  const bool is_binary = message.fields.Flag("binary");
  Json head = HeadOf("post", message.context.id(), message.fields, {"extension"});
  std::optional<std::string> body = message.fields.Text("text");
  if (is_binary) {
    head["binary"] = true;
    body = base::DecodeBase64(*body);
  }
  if (!body) return journal_.AddExplanation(R"("text":"A binary message that is no base64.")");
  set_process_.Post(head, *body);
  TraceRecord record = message.Record(PostKind(is_binary), message.fields.Raw("extension"),
                                      message.fields.Raw("text"));
  record.time_ns = base::NowNs();
  journal_.AddTrace(record);
}

void PageMessages::DeliverPosted(const set_process::Posted& posted) {
  const auto found = contexts_.Find(posted.context);
  if (!found) return;
  const std::string extension = base::JsonText(posted.extension);
  const std::string text =
      base::JsonText(posted.is_binary ? base::EncodeBase64(posted.body) : std::string(posted.body));
  std::string members = R"("type":"posted","extension":)";
  members.append(extension).append(R"(,"text":)").append(text);
  if (posted.is_binary) members += kBinary;
  found->Deliver(members);
  TraceRecord record;
  record.context = posted.context;
  record.direction = "toPage";
  record.kind = PostKind(posted.is_binary);
  record.peer = extension;
  record.payload = text;
  record.time_ns = base::NowNs();
  journal_.AddTrace(record);
}

void PageMessages::HandleReport(PageContext& context, std::string_view type,
                                const base::JsonObject& message) {
  if (type == R"("ack")") return context.Acknowledge(message.Integer("seq").value_or(0));
  const std::string place = R"(,"context":)" + std::to_string(context.id());
  const std::string text(message.RawText("text"));
  if (type == R"("state")") {
    const bool had_focus = context.is_focused();
    context.SetState(message);
    if (context.is_focused() && !had_focus) contexts_.NoteFocus(context);
    if (context.is_top()) contexts_.ForgetScriptlessBefore(context.opened_ns());
    return contexts_.TellChange();
  }
  if (type == R"("console")" && !text.empty() && !message.RawText("level").empty()) {
    std::string members = R"("level":)";
    members.append(message.Raw("level")).append(R"(,"text":)").append(text).append(place);
    const std::string_view where = message.RawText("where");
    if (!where.empty()) members.append(R"(,"where":)").append(where);
    return journal_.AddConsole(members);
  }
  if (type == R"("explain")" && !text.empty()) {
    return journal_.AddExplanation(R"("text":)" + text + place);
  }
  const std::string_view key = message.RawText("key_name");
  if (key.empty()) return;
  if (type == R"("keyReport")") keys_.Press(key, KeyPresses::Kind::kNative);
  if (type == R"("keyPress")") {
    keys_.Press(key, message.Flag("long") ? KeyPresses::Kind::kLong : KeyPresses::Kind::kShort);
  }
}

}  // namespace orvane::server
