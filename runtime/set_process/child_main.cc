// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/child_main.h"

#include <sys/prctl.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

#include "base/base64.h"
#include "base/frame.h"
#include "base/json_text.h"
#include "extensions/bounded_json.h"
#include "set_process/end_watch.h"
#include "television/control.h"
#include "television/error_text.h"

namespace orvane::set_process {

using picojson::value;

using television::Control;
using television::ErrorText;
using television::Fields;
using television::Home;
using television::Outbox;
using television::ReadStartOptions;
using television::RequestError;
using television::Television;

namespace {

constexpr std::chrono::milliseconds kGrace{3000};
constexpr int64_t kMostId = int64_t{1} << 53;

class Dispatcher {
 public:
  Dispatcher(Outbox& outbox, const Home& home) : outbox_(outbox), home_(home) {}

  // False: the server wants the process to end.
  bool Handle(std::string_view body);

 private:
  struct Request {
    const Fields& fields;
    int64_t id;  // 0: wants no answer
    int64_t context() const { return fields.Integer("context", 0, kMostId); }
  };
  using Handler = void (Dispatcher::*)(const Request& request);
  struct Row {
    std::string_view op;
    Handler handle;
  };
  static const Row kRows[];

  void HandleRequest(const Fields& fields);
  void Start(const Fields& fields);
  void Create(const Request& request);
  void Sync(const Request& request);
  void Post(const Request& request);
  void Runtime(const Request& request);
  void Widget(const Request& request);
  void Privilege(const Request& request);
  void Close(const Request& request);
  void CallControl(const Request& request);

  // Tells the server what is handled from now on.
  void Tell(const Request& request, std::string_view what, std::string_view name,
            std::string_view text);
  Television& television();

  Outbox& outbox_;
  const Home& home_;
  std::unique_ptr<Television> television_;
  std::unique_ptr<Control> control_;
};

const Dispatcher::Row Dispatcher::kRows[] = {
    {"sync", &Dispatcher::Sync},           {"post", &Dispatcher::Post},
    {"runtime", &Dispatcher::Runtime},     {"control", &Dispatcher::CallControl},
    {"create", &Dispatcher::Create},       {"close", &Dispatcher::Close},
    {"privilege", &Dispatcher::Privilege}, {"widget", &Dispatcher::Widget},
};

bool Dispatcher::Handle(std::string_view body) {
  std::string error;
  std::optional<value> frame = extensions::ParseBoundedJson(body, &error);
  if (!frame) frame = extensions::ParseBoundedJson(base::WithoutHalfCharacters(body), &error);
  if (!frame || !frame->is<picojson::object>()) {
    outbox_.AnswerError(0, "A frame is no JSON object: " + error);
    return true;
  }
  const Fields fields(frame->get<picojson::object>(), "the frame");
  const value* const op = fields.Find("op");
  if (op != nullptr && op->is<std::string>() && op->get<std::string>() == "shutdown") return false;
  HandleRequest(fields);
  return true;
}

void Dispatcher::HandleRequest(const Fields& fields) {
  int64_t id = 0;
  try {
    id = fields.Integer("id", 0, kMostId, 0);
    const std::string& op = fields.Text("op");
    if (op == "start") return Start(fields);
    for (const Row& row : kRows) {
      if (row.op == op) return (this->*row.handle)({fields, id});
    }
    throw RequestError("There is no request \"" + op + "\".");
  } catch (const std::exception& error) {
    outbox_.AnswerError(id, ErrorText(error.what()));
  }
}

void Dispatcher::Start(const Fields& fields) {
  try {
    if (television_) throw RequestError("The set runs already; a process runs one set.");
    const value* const snapshot = fields.Find("snapshot");
    television_ =
        std::make_unique<Television>(ReadStartOptions(fields.Object("options")),
                                     snapshot == nullptr ? value() : *snapshot, home_, outbox_);
    control_ = std::make_unique<Control>(*television_, outbox_);
    outbox_.Send(value(television_->Started(outbox_)).serialize());
  } catch (const std::exception& error) {
    outbox_.Send(value(picojson::object{{"op", value("failed")}, {"error", value(error.what())}})
                     .serialize());
  }
}

Television& Dispatcher::television() {
  if (!television_) throw RequestError("No set runs yet; send \"start\" first.");
  return *television_;
}

void Dispatcher::Tell(const Request& request, std::string_view what, std::string_view name,
                      std::string_view text) {
  // What the runtime answers itself cannot end the process.
  Television& set = television();  // has to be there
  if (what != "runtime") set.events().SendChangedSnapshot();
  std::optional<int64_t> context;
  if (request.fields.Has("context")) context = request.context();
  set.events().SetContext(context);
  outbox_.Handling(request.id, what, context.value_or(0), name, text);
}

void Dispatcher::Create(const Request& request) {
  const std::string& extension = request.fields.Text("extension");
  Tell(request, "create", extension, "");
  television().contexts().Create(request.context(), extension);
  outbox_.Answer(request.id, {});
}

void Dispatcher::Sync(const Request& request) {
  const std::string& extension = request.fields.Text("extension");
  const std::string& text = request.fields.Text("text");
  Tell(request, "sync", extension, text);
  const auto begin = std::chrono::steady_clock::now();
  const std::string reply = television().contexts().SendSync(request.context(), extension, text);
  const auto time = std::chrono::steady_clock::now() - begin;
  outbox_.AnswerText(request.id, reply,
                     std::chrono::duration_cast<std::chrono::microseconds>(time).count());
}

void Dispatcher::Post(const Request& request) {
  const std::string& extension = request.fields.Text("extension");
  const std::string& text = request.fields.Text("text");
  Tell(request, "post", extension, text);
  if (request.fields.Flag("binary", false)) {
    const auto bytes = base::DecodeBase64(text);
    if (!bytes) request.fields.Refuse("text", "base64, where \"binary\" is true");
    television().contexts().PostBinary(request.context(), extension, *bytes);
  } else {
    television().contexts().Post(request.context(), extension, text);
  }
  outbox_.Handled();
}

void Dispatcher::Runtime(const Request& request) {
  const std::string& kind = request.fields.Text("kind");
  const std::string& uri = request.fields.Text("uri");
  const std::string text = request.fields.Text("text", "");
  Tell(request, "runtime", uri, text);
  television::RuntimeServices& services = television().services();
  if (kind == "plain") return outbox_.Answer(request.id, value(services.Send(uri, text)));
  if (kind == "sync") return outbox_.Answer(request.id, value(services.SendSync(uri, text)));
  if (kind != "async") request.fields.Refuse("kind", R"("plain", "sync" or "async")");
  services.SendAsync(uri, text, [this, id = request.id](const std::string& answer) {
    outbox_.Answer(id, value(answer));
  });
}

void Dispatcher::Widget(const Request& request) {
  constexpr int64_t kLowest = std::numeric_limits<int>::min();
  constexpr int64_t kHighest = std::numeric_limits<int>::max();
  const std::string& call = request.fields.Text("call");
  Tell(request, "runtime", "widget." + call, "");
  picojson::object named;
  size_t count = 0;
  for (const value& argument : request.fields.Array("args")) {
    named["argument " + std::to_string(++count)] = argument;
  }
  const Fields arguments(named, "widget." + call);
  const auto number = [&](const char* name) {
    return static_cast<int>(arguments.Integer(name, kLowest, kHighest));
  };
  television::RuntimeServices& services = television().services();
  if (call == "move") {
    const int x = number("argument 1");
    return outbox_.Answer(request.id, value(services.MoveWindow(x, number("argument 2"))));
  }
  if (call != "setQuarterPosition") {
    request.fields.Refuse("call", R"("move" or "setQuarterPosition")");
  }
  outbox_.Answer(request.id, value(services.SetQuarterPosition(number("argument 1"))));
}

void Dispatcher::Privilege(const Request& request) {
  const std::string& privilege = request.fields.Text("privilege");
  Tell(request, "runtime", "privilege", privilege);
  outbox_.Answer(request.id, value(television().services().HasPrivilege(privilege)));
}

void Dispatcher::Close(const Request& request) {
  Tell(request, "close", "", "");
  television().contexts().Close(request.context());
  outbox_.Answer(request.id, {});
}

void Dispatcher::CallControl(const Request& request) {
  static const auto* const kNone = new picojson::object();
  const std::string& method = request.fields.Text("method");
  const value* const given = request.fields.Find("params");
  Tell(request, "control", method, given == nullptr ? "" : given->serialize());
  const std::string owner = "the parameters of " + method;
  const Fields parameters = given == nullptr ? Fields(*kNone, owner) : Fields(*given, owner);
  const auto result = control_->Call(request.id, method, parameters);
  if (result) outbox_.Answer(request.id, *result);
}

// The terminal's interrupt is the server's to answer; its end is this process's, at once where the
// kernel tells of it.
void TieToServer() {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  std::signal(SIGINT, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace

int RunSetProcess(int socket, const Home& home) {
  TieToServer();
  Outbox outbox(socket);
  EndWatch end_watch(socket, kGrace);
  Dispatcher dispatcher(outbox, home);
  base::FrameReader reader;
  int exit_code = 0;
  try {
    while (const auto body = base::ReceiveFrame(socket, &reader)) {
      if (!dispatcher.Handle(*body)) break;
    }
  } catch (const base::FrameError& error) {
    std::fprintf(stderr, "orvane: the server sent no frames: %s\n", error.what());
    exit_code = 2;
  }
  end_watch.BeginGrace();
  return exit_code;
}

}  // namespace orvane::set_process
