// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "base/frame.h"
#include "set_process/message_in_hand.h"

namespace {

using orvane::Json;
using orvane::base::Frame;

constexpr int kSocket = 3;
constexpr int kMemory = 4;

void Send(const Json& head, std::string_view body = "") {
  std::string bytes;
  orvane::base::AppendFrame(orvane::base::JsonText(head), body, &bytes);
  if (!orvane::base::SendBytes(kSocket, bytes)) _exit(0);
}

// `members` have the result, unless that is the body.
void Answer(const Json& request, Json members, std::string_view body = "") {
  if (!request.contains("id")) return;
  members["op"] = "answer";
  members["id"] = request["id"];
  members["us"] = 7;
  Send(members, body);
}

void SendPosts(const Json& request, int count) {
  for (int i = 1; i <= count; ++i) {
    Send({{"op", "posted"}, {"context", request["context"]}, {"extension", request["extension"]}},
         std::to_string(i));
  }
}

// Does what the text's command says: {"cmd":"echo"}, "crash", "hang" or "post", which has a count.
void HandleMessage(const Frame& frame) {
  const Json& head = frame.head;
  static orvane::set_process::MessageInHand in_hand{orvane::base::UniqueFd(kMemory)};
  in_hand.Begin("sync", head["context"], head["extension"].get<std::string>(), frame.body);
  const Json message = Json::parse(frame.body, nullptr, false);
  const std::string command = message.is_object() ? message.value("cmd", "") : "";
  if (command == "crash") {
    static_cast<void>(!write(STDERR_FILENO, "about to crash\n", 15));
    std::abort();
  }
  if (command == "hang") {
    while (true) pause();
  }
  if (command == "post") SendPosts(head, message.value("count", 0));
  in_hand.End();
  Answer(head, Json::object(), frame.body);
}

void Start(const Frame& frame) {
  const std::string before(frame.body.empty() ? "null" : frame.body);
  Send({{"op", "snapshot"}}, R"({"starts":)" + before + "}");
  Send({{"op", "started"},
        {"catalogue", {{{"name", "test.ext"}, {"entryPoints", Json::array()}}}},
        {"scripts", {{"test.ext", "exports.one = 1;"}}},
        {"warnings", Json::array()}});
}

void Handle(const Frame& frame) {
  const Json& head = frame.head;
  const std::string operation = head.value("op", "");
  if (operation == "shutdown") _exit(0);
  if (operation == "start") return Start(frame);
  if (operation == "sync" || operation == "post") return HandleMessage(frame);
  if (operation == "create" && head["extension"] == "refuse.me") {
    return Answer(head, {{"error", {{"message", "refused"}}}});
  }
  if (operation == "close") {
    Send({{"op", "event"}, {"name", "closed"}, {"data", head["context"]}});
  }
  if (operation != "control") return Answer(head, {{"result", true}});
  const Json parameters = head.value("params", Json::object());
  if (head["method"] == "event") {
    Json event = parameters;
    event["op"] = "event";
    const std::string body = event.value("body", "");
    event.erase("body");
    Send(event, body);
  }
  Answer(head, {{"result", parameters}});
}

}  // namespace

int main() {
  orvane::base::FrameReader reader;
  while (const auto frame = orvane::base::ReceiveFrame(kSocket, &reader)) Handle(*frame);
  return 0;
}
