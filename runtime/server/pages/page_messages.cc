// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/page_messages.h"

#include <chrono>
#include <utility>

#include "base/base64.h"
#include "base/json_fields.h"
#include "base/wall_clock.h"

namespace orvane::server {

using std::chrono::steady_clock;

namespace {

// What the heads of messages have besides texts, their type and their number.

struct WidgetHead {
  std::string call;
  std::vector<Json> args;
};
template <class Map>
void MapFields(Map& map, WidgetHead& head) {
  map("call", head.call);
  map("args", head.args);
}

struct Console {
  std::string level;
  std::string text;
  std::optional<std::string> where;
};
template <class Map>
void MapFields(Map& map, Console& report) {
  map("level", report.level);
  map("text", report.text);
  map.Optional("where", report.where);
}

struct Key {
  std::string key_name;
  bool is_long = false;
};
template <class Map>
void MapFields(Map& map, Key& report) {
  map("key_name", report.key_name);
  map.Optional("long", report.is_long);
}

template <class T>
T Read(const Json& head) {
  return base::FromJson<T>(head, "the message");
}

// A field that has to be there. Throws JsonError.
std::string FieldText(const Json& head, const char* name) {
  std::string text;
  base::fields::Reader(head, "the message")(name, text);
  return text;
}

// A number that is none of a message's counts as none.
std::optional<int64_t> NumberOf(const Json& head, const char* name) {
  const auto number = head.find(name);
  if (number == head.end() || !number->is_number_integer()) return std::nullopt;
  return number->get<int64_t>();
}

std::string TypeOf(const Json& head) {
  const auto type = head.find("type");
  return type != head.end() && type->is_string() ? type->get<std::string>() : "";
}

PageMessage Answer(int64_t id, Json result) {
  return {{{"type", "answer"}, {"id", id}, {"result", std::move(result)}}, std::nullopt, false};
}

PageMessage Refusal(std::optional<int64_t> id, const std::string& why) {
  PageMessage answer{{{"type", "answer"}, {"error", why}}, std::nullopt, false};
  if (id) answer.head["id"] = *id;
  return answer;
}

// What a call was, for the sentence that says that it failed.
std::string NameOf(const TraceRecord& record) {
  try {
    const Json message = base::ParseJson(record.payload.get<std::string>());
    return record.peer + " " + message.at("cmd").get<std::string>();
  } catch (const std::exception&) {
    return record.peer;
  }
}

std::string PostKind(bool is_binary) { return is_binary ? "nativeBinary" : "nativePost"; }

Json PayloadOf(std::string_view body, bool is_binary) {
  return is_binary ? base::EncodeBase64(body) : std::string(body);
}

TraceRecord MakeRecord(int64_t context, std::string direction, std::string kind, std::string peer,
                       Json payload) {
  TraceRecord record;
  record.time_ns = base::NowNs();
  record.context = context;
  record.direction = std::move(direction);
  record.kind = std::move(kind);
  record.peer = std::move(peer);
  record.payload = std::move(payload);
  return record;
}

}  // namespace

struct PageMessages::Request {
  PageContext& context;
  const PageMessage& message;
  int64_t id;
  const Reply& reply;

  std::string Text(const char* field) const { return FieldText(message.head, field); }
  std::string_view Body() const {
    if (!message.body) throw base::JsonError("The message has no text.");
    return *message.body;
  }
  TraceRecord Record(std::string kind, std::string peer, Json payload) const {
    return MakeRecord(context.id(), "fromPage", std::move(kind), std::move(peer),
                      std::move(payload));
  }
};

const PageMessages::Form PageMessages::kForms[] = {
    {"sync", &PageMessages::Sync},
    {"create", &PageMessages::Create},
    {"privilege", &PageMessages::AskPrivilege},
    {"runtime", &PageMessages::CallRuntime},
    {"widget", &PageMessages::CallWidget},
    {"echo", &PageMessages::Echo},
    {"post", &PageMessages::Post},
};

void PageMessages::HandleSocketMessage(PageContext& context, std::string_view data,
                                       bool is_binary) {
  const auto deliver = [weak = context.weak_from_this()](PageMessage answer) {
    if (const auto self = weak.lock()) self->Deliver(std::move(answer));
  };
  try {
    const PageMessage message = ReadPageMessage(data, is_binary);
    if (!message.head.contains("id")) return HandleReport(context, message.head);
    const auto id = NumberOf(message.head, "id");
    if (!id) throw base::JsonError("The \"id\" of a message is a whole number.");
    if (!context.Receive(*id)) return;  // it came before the socket was lost
    const bool wants_answer = TypeOf(message.head) != "post";
    const Reply nobody = [](const PageMessage&) {};
    HandleForm({context, message, *id, wants_answer ? Reply(deliver) : nobody});
  } catch (const base::JsonError& error) {
    const auto id = FindMessageId(data);
    if (id && context.Receive(*id)) return deliver(Refusal(id, error.what()));
    journal_.AddExplanation({{"text", std::string("A page's message was dropped: ") + error.what()},
                             {"context", context.id()}});
  }
}

void PageMessages::HandleRequest(PageContext& context, std::string_view data, bool is_binary,
                                 const Reply& reply) {
  std::optional<int64_t> id;
  try {
    const PageMessage message = ReadPageMessage(data, is_binary);
    id = NumberOf(message.head, "id");
    if (!id) throw base::JsonError("A message of a request has an \"id\", a whole number.");
    if (!context.Receive(*id)) throw base::JsonError("A message with this id has come before.");
    HandleForm({context, message, *id, reply});
  } catch (const base::JsonError& error) {
    reply(Refusal(id ? id : FindMessageId(data), error.what()));
  }
}

void PageMessages::HandleForm(const Request& request) {
  const std::string type = TypeOf(request.message.head);
  try {
    for (const Form& form : kForms) {
      if (type == form.type) return (this->*form.handle)(request);
    }
    throw base::JsonError("A message of this form is known to nobody.");
  } catch (const base::JsonError& error) {
    request.reply(Refusal(request.id, error.what()));
  }
}

void PageMessages::Sync(const Request& request) {
  const std::string extension = request.Text("extension");
  Ask(request, {{"op", "sync"}, {"extension", extension}}, request.Body(),
      request.Record("nativeSync", extension, std::string(request.Body())));
}

void PageMessages::Create(const Request& request) {
  const std::string extension = request.Text("extension");
  Ask(request, {{"op", "create"}, {"extension", extension}}, "",
      request.Record("create", extension, nullptr));
}

void PageMessages::AskPrivilege(const Request& request) {
  const std::string privilege = request.Text("privilege");
  Ask(request, {{"op", "privilege"}, {"privilege", privilege}}, "",
      request.Record("privilege", privilege, nullptr));
}

void PageMessages::CallRuntime(const Request& request) {
  const std::string way = request.Text("kind");  // "plain", "sync" or "async"
  const std::string uri = request.Text("uri");
  const char* kind = "runtimePlain";
  if (way == "sync") kind = "runtimeSync";
  if (way == "async") kind = "runtimeAsync";
  Ask(request, {{"op", "runtime"}, {"kind", way}, {"uri", uri}}, request.Body(),
      request.Record(kind, uri, std::string(request.Body())));
}

void PageMessages::CallWidget(const Request& request) {
  const auto head = Read<WidgetHead>(request.message.head);
  const Json args(head.args);
  Ask(request, {{"op", "widget"}, {"call", head.call}}, base::JsonText(args),
      request.Record("widget", head.call, args));
}

void PageMessages::Echo(const Request& request) { request.reply(Answer(request.id, nullptr)); }

void PageMessages::Post(const Request& request) {
  const std::string extension = request.Text("extension");
  const bool is_binary = request.message.is_binary;
  Json posted{{"op", "post"}, {"context", request.context.id()}, {"extension", extension}};
  if (is_binary) posted["binary"] = true;
  set_process_.Post(posted, request.Body());
  journal_.AddTrace(
      request.Record(PostKind(is_binary), extension, PayloadOf(request.Body(), is_binary)));
  request.reply(Answer(request.id, nullptr));
}

void PageMessages::Ask(const Request& request, Json head, std::string_view body,
                       TraceRecord record) {
  const bool needs_instance = head["op"] == "create" || head["op"] == "sync";
  head["context"] = request.context.id();
  set_process_.Request(
      std::move(head), body,
      [this, needs_instance, reply = request.reply, id = request.id, record = std::move(record),
       begin = steady_clock::now()](const set_process::Answer& answer) mutable {
        const auto turn = steady_clock::now() - begin;
        record.microseconds = std::chrono::duration_cast<std::chrono::microseconds>(turn).count();
        if (needs_instance && answer.ok()) {
          contexts_.NoteInstance(record.context, record.peer);
        }
        Finish(answer, id, reply, record);
      });
}

// Replies, and writes down what was asked and what came of it.
void PageMessages::Finish(const set_process::Answer& answer, int64_t id, const Reply& reply,
                          TraceRecord& record) {
  if (!answer.ok()) {
    const std::string refused = answer.error();
    record.error = refused.empty() ? NameOf(record) + ": " + answer.failure + "." : refused;
    reply(Refusal(id, *record.error));
  } else {
    const auto result = answer.head.find("result");
    const bool has_result = result != answer.head.end();
    PageMessage told{{{"type", "answer"}, {"id", id}}, std::nullopt, false};
    if (answer.microseconds() >= 0) {
      record.microseconds = answer.microseconds();
      told.head["us"] = answer.microseconds();
    }
    if (has_result) {
      told.head["result"] = *result;
    } else {
      told.body = answer.body;
    }
    reply(std::move(told));
    record.reply = has_result ? *result : Json(std::string(answer.body));
  }
  journal_.AddTrace(std::move(record));
}

void PageMessages::DeliverPosted(const set_process::Posted& posted) {
  const auto context = contexts_.Find(posted.context);
  if (!context) return;
  context->Deliver(
      {{{"type", "posted"}, {"extension", posted.extension}}, posted.body, posted.is_binary});
  journal_.AddTrace(MakeRecord(posted.context, "toPage", PostKind(posted.is_binary),
                               posted.extension, PayloadOf(posted.body, posted.is_binary)));
}

void PageMessages::HandleReport(PageContext& context, const Json& report) {
  const std::string type = TypeOf(report);
  if (type == "ack") return context.Acknowledge(NumberOf(report, "seq").value_or(0));
  if (type == "state") return TakeState(context, report);
  if (type == "keyReport") {
    return keys_.Press(Read<Key>(report).key_name, KeyPresses::PressKind::kNative);
  }
  if (type == "keyPress") {
    const auto key = Read<Key>(report);
    return keys_.Press(key.key_name,
                       key.is_long ? KeyPresses::PressKind::kLong : KeyPresses::PressKind::kShort);
  }
  Json entry;
  if (type == "console") entry = base::ToJson(Read<Console>(report));
  if (type == "explain") entry = {{"text", FieldText(report, "text")}};
  if (entry.is_null()) throw base::JsonError("A report of this form is known to nobody.");
  entry["context"] = context.id();
  if (type == "console") return journal_.AddConsole(std::move(entry));
  journal_.AddExplanation(std::move(entry));
}

void PageMessages::TakeState(PageContext& context, const Json& report) {
  const bool had_focus = context.state().focused;
  context.set_state(Read<PageState>(report));
  if (context.state().focused && !had_focus) contexts_.NoteFocus(context);
  if (context.state().top) contexts_.ForgetScriptlessBefore(context.opened_ns());
  contexts_.TellChange();
}

}  // namespace orvane::server
