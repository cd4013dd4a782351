// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/child_main.h"

#include <sys/prctl.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/frame.h"
#include "base/json_fields.h"
#include "set_process/end_watch.h"
#include "set_process/served_television.h"
#include "television/request_error.h"
#include "television/shown_text.h"

namespace orvane::set_process {

using television::ErrorText;
using television::RequestError;
using television::ShippedParts;

namespace {

constexpr int64_t kMostId = int64_t{1} << 53;

// The heads of requests. Each has "op" besides, and "id" if it wants an answer.

struct Numbers {
  int64_t id = 0;
  std::optional<int64_t> context;
};
template <class Map>
void MapFields(Map& map, Numbers& numbers) {
  map.Optional("id", numbers.id, base::Range{0, kMostId});
  map("context", numbers.context);
}

struct ToExtension {
  std::string extension;
  int64_t context = 0;
  bool is_binary = false;
};
template <class Map>
void MapFields(Map& map, ToExtension& head) {
  map("extension", head.extension);
  map("context", head.context, base::Range{0, kMostId});
  map.Optional("binary", head.is_binary);
}

enum class Way { kPlain, kSync, kAsync };
constexpr base::EnumName<Way> kWayNames[] = {
    {Way::kPlain, "plain"}, {Way::kSync, "sync"}, {Way::kAsync, "async"}};
constexpr auto& EnumNames(Way) { return kWayNames; }

struct ToRuntime {
  Way way = Way::kPlain;
  std::string uri;
};
template <class Map>
void MapFields(Map& map, ToRuntime& head) {
  map("kind", head.way);
  map("uri", head.uri);
}

enum class WidgetCall { kMove, kSetQuarterPosition };
constexpr base::EnumName<WidgetCall> kWidgetCallNames[] = {
    {WidgetCall::kMove, "move"}, {WidgetCall::kSetQuarterPosition, "setQuarterPosition"}};
constexpr auto& EnumNames(WidgetCall) { return kWidgetCallNames; }

struct ToWidget {
  WidgetCall call = WidgetCall::kMove;
};
template <class Map>
void MapFields(Map& map, ToWidget& head) {
  map("call", head.call);
}

struct ToControl {
  std::string method;
  Json parameters;
};
template <class Map>
void MapFields(Map& map, ToControl& head) {
  map("method", head.method);
  map.Optional("params", head.parameters);
}

struct Start {
  television::TelevisionOptions options;
  int64_t last_log_line = 0;
};
template <class Map>
void MapFields(Map& map, Start& head) {
  map("options", head.options);
  map.Optional("lastLogLine", head.last_log_line);
}

class Dispatcher {
 public:
  Dispatcher(FrameSender& frames, MessageInHand& in_hand, const ShippedParts& shipped)
      : frames_(frames), in_hand_(in_hand), shipped_(shipped) {}

  // False: the server wants the process to end.
  bool Handle(const base::Frame& frame);

 private:
  struct Request {
    const Json& head;
    std::string_view body;
    Numbers numbers;

    template <class T>
    T Read() const {
      return base::FromJson<T>(head, "the frame");
    }
  };
  using Handler = void (Dispatcher::*)(const Request& request);
  struct OperationRow {
    std::string_view op;
    Handler handle;
  };
  static const OperationRow kRows[];

  void HandleRequest(const std::string& op, const base::Frame& frame);
  void StartSet(const base::Frame& frame);
  void Create(const Request& request);
  void Sync(const Request& request);
  void Post(const Request& request);
  void Runtime(const Request& request);
  void Widget(const Request& request);
  void Privilege(const Request& request);
  void Close(const Request& request);
  void CallControl(const Request& request);

  // Before what a request wants is done.
  void Begin(const Request& request, std::string_view what, std::string_view name,
             std::string_view text);
  ServedTelevision& television();

  FrameSender& frames_;
  MessageInHand& in_hand_;
  const ShippedParts& shipped_;
  std::unique_ptr<ServedTelevision> television_;
};

const Dispatcher::OperationRow Dispatcher::kRows[] = {
    {"sync", &Dispatcher::Sync},           {"post", &Dispatcher::Post},
    {"runtime", &Dispatcher::Runtime},     {"control", &Dispatcher::CallControl},
    {"create", &Dispatcher::Create},       {"close", &Dispatcher::Close},
    {"privilege", &Dispatcher::Privilege}, {"widget", &Dispatcher::Widget},
};

bool Dispatcher::Handle(const base::Frame& frame) {
  const auto op = frame.head.find("op");
  const std::string name = op != frame.head.end() && op->is_string() ? op->get<std::string>() : "";
  if (name == "shutdown") return false;
  if (name == "start") {
    StartSet(frame);
  } else {
    HandleRequest(name, frame);
  }
  return true;
}

void Dispatcher::HandleRequest(const std::string& op, const base::Frame& frame) {
  Request request{frame.head, frame.body, {}};
  try {
    request.numbers = request.Read<Numbers>();
    const auto* const row = std::find_if(std::begin(kRows), std::end(kRows),
                                         [&](const OperationRow& known) { return known.op == op; });
    if (row == std::end(kRows)) throw RequestError("There is no request \"" + op + "\".");
    (this->*row->handle)(request);
  } catch (const std::exception& error) {
    frames_.AnswerError(request.numbers.id, ErrorText(error.what()));
  }
  in_hand_.End();
}

void Dispatcher::StartSet(const base::Frame& frame) {
  try {
    if (television_) throw RequestError("The set runs already; a process runs one set.");
    const auto head = base::FromJson<Start>(frame.head, "the frame");
    const Json snapshot = frame.body.empty() ? Json() : base::ParseJson(frame.body);
    television_ = std::make_unique<ServedTelevision>(head.options, shipped_, snapshot,
                                                     head.last_log_line, frames_, in_hand_);
    frames_.Send(television_->Started());
  } catch (const std::exception& error) {
    frames_.Send({{"op", "failed"}, {"error", {{"message", error.what()}}}});
  }
}

ServedTelevision& Dispatcher::television() {
  if (!television_) throw RequestError("No set runs yet; send \"start\" first.");
  return *television_;
}

void Dispatcher::Begin(const Request& request, std::string_view what, std::string_view name,
                       std::string_view text) {
  // What the runtime answers itself cannot end the process.
  ServedTelevision& set = television();  // has to be there
  if (what != "runtime") set.events().SendChangedSnapshot();
  set.events().SetContext(request.numbers.context);
  in_hand_.Begin(what, request.numbers.context.value_or(0), name, text);
}

void Dispatcher::Create(const Request& request) {
  const auto head = request.Read<ToExtension>();
  Begin(request, "create", head.extension, "");
  television().contexts().Get(head.context, head.extension);
  frames_.Answer(request.numbers.id, {});
}

void Dispatcher::Sync(const Request& request) {
  const auto head = request.Read<ToExtension>();
  Begin(request, "sync", head.extension, request.body);
  const auto begin = std::chrono::steady_clock::now();
  const std::string reply = television()
                                .contexts()
                                .Get(head.context, head.extension)
                                .SendSyncMessage(std::string(request.body));
  const auto time = std::chrono::steady_clock::now() - begin;
  frames_.AnswerText(request.numbers.id, reply,
                     std::chrono::duration_cast<std::chrono::microseconds>(time).count());
}

void Dispatcher::Post(const Request& request) {
  const auto head = request.Read<ToExtension>();
  const std::string body(request.body);
  Begin(request, "post", head.extension, head.is_binary ? "" : body);
  extensions::Instance& instance = television().contexts().Get(head.context, head.extension);
  head.is_binary ? instance.PostBinaryMessage(body) : instance.PostMessage(body);
}

void Dispatcher::Runtime(const Request& request) {
  const auto head = request.Read<ToRuntime>();
  const std::string text(request.body);
  const int64_t id = request.numbers.id;
  Begin(request, "runtime", head.uri, text);
  television::RuntimeServices& services = television().services();
  switch (head.way) {
    case Way::kPlain:
      return frames_.Answer(id, services.Send(head.uri, text));
    case Way::kSync:
      return frames_.AnswerText(id, services.SendSync(head.uri, text));
    case Way::kAsync:
      services.SendAsync(head.uri, text,
                         [this, id](const std::string& answer) { frames_.AnswerText(id, answer); });
  }
}

void Dispatcher::Widget(const Request& request) {
  const auto call = request.Read<ToWidget>().call;
  const std::string name = request.head["call"];
  Begin(request, "runtime", "widget." + name, request.body);
  const auto numbers = [&] {
    std::vector<int> arguments;
    base::fields::Read(base::ParseJson(request.body), "the arguments of widget." + name, arguments);
    arguments.resize(2);
    return arguments;
  }();
  television::RuntimeServices& services = television().services();
  frames_.AnswerText(request.numbers.id, call == WidgetCall::kMove
                                             ? services.MoveWindow(numbers[0], numbers[1])
                                             : services.SetQuarterPosition(numbers[0]));
}

void Dispatcher::Privilege(const Request& request) {
  std::string privilege;
  base::fields::Reader(request.head, "the frame")("privilege", privilege);
  Begin(request, "runtime", "privilege", privilege);
  frames_.Answer(request.numbers.id, television().services().HasPrivilege(privilege));
}

void Dispatcher::Close(const Request& request) {
  Begin(request, "close", "", "");
  television().contexts().Close(request.numbers.context.value_or(0));
  frames_.Answer(request.numbers.id, {});
}

void Dispatcher::CallControl(const Request& request) {
  const auto head = request.Read<ToControl>();
  Begin(request, "control", head.method,
        head.parameters.is_null() ? "" : base::JsonText(head.parameters));
  television().control().Call(
      head.method, head.parameters,
      [this, id = request.numbers.id](const Json& result, const std::string& error) {
        if (error.empty()) return frames_.Answer(id, result);
        frames_.AnswerError(id, ErrorText(error));
      });
}

// The terminal's interrupt is the server's to answer; its end is this process's, at once where the
// kernel tells of it.
void TieToServer() {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  std::signal(SIGINT, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
}

// False: the end.
bool ServeOne(int socket, base::FrameReader* reader, Dispatcher& dispatcher, FrameSender& frames) {
  try {
    const auto frame = base::ReceiveFrame(socket, reader);
    return frame && dispatcher.Handle(*frame);
  } catch (const base::JsonError& error) {
    frames.AnswerError(0, std::string("A frame cannot be read: ") + error.what());
    return true;
  }
}

}  // namespace

int RunSetProcess(int socket, MessageInHand& in_hand, const ShippedParts& shipped,
                  std::chrono::milliseconds grace) {
  TieToServer();
  FrameSender frames(socket);
  EndWatch end_watch(socket, grace);
  Dispatcher dispatcher(frames, in_hand, shipped);
  base::FrameReader reader;
  int exit_code = 0;
  try {
    while (ServeOne(socket, &reader, dispatcher, frames)) {
    }
  } catch (const base::FrameError& error) {
    std::fprintf(stderr, "orvane: the server sent no frames: %s\n", error.what());
    exit_code = 2;
  }
  end_watch.BeginGrace();
  return exit_code;
}

}  // namespace orvane::set_process
