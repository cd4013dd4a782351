// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "base/frame.h"
#include "base/json_object.h"
#include "base/json_writer.h"

namespace {

using orvane::base::JsonObject;
using orvane::base::JsonWriter;

constexpr int kSocket = 3;

void Send(const std::string& body) {
  std::string bytes;
  orvane::base::AppendFrame(body, &bytes);
  if (!orvane::base::SendBytes(kSocket, bytes)) _exit(0);
}

void Answer(const orvane::base::JsonObject& frame, std::string_view result) {
  if (frame.Raw("id").empty()) return;
  Send(orvane::base::JsonWriter()
           .Text("op", "answer")
           .Raw("id", frame.Raw("id"))
           .Raw("result", result)
           .Number("us", 7)
           .Take());
}

void SendPosts(const orvane::base::JsonObject& frame, int count) {
  for (int i = 1; i <= count; ++i) {
    Send(orvane::base::JsonWriter()
             .Text("op", "posted")
             .Raw("context", frame.Raw("context"))
             .Raw("extension", frame.Raw("extension"))
             .Text("text", std::to_string(i))
             .Take());
  }
}

// Does what the text's command says: {"cmd":"echo"}, "crash", "hang" or "post", which has a count.
void HandleMessage(const orvane::base::JsonObject& frame) {
  Send(R"({"op":"handling","id":)" + std::string(frame.Raw("id").empty() ? "0" : frame.Raw("id")) +
       R"(,"what":"sync","context":)" + std::string(frame.Raw("context")) + R"(,"name":)" +
       std::string(frame.Raw("extension")) + R"(,"text":)" + std::string(frame.Raw("text")) + "}");
  const std::string text = frame.Text("text").value_or("");
  const auto message = orvane::base::JsonObject::Parse(text);
  const std::string command = message ? message->Text("cmd").value_or("") : "";
  if (command == "crash") {
    static_cast<void>(!write(STDERR_FILENO, "about to crash\n", 15));
    std::abort();
  }
  if (command == "hang") {
    while (true) pause();
  }
  if (command == "post") SendPosts(frame, static_cast<int>(message->Integer("count").value_or(0)));
  if (frame.Raw("id").empty()) Send(R"({"op":"handled"})");
  Answer(frame, frame.Raw("text"));
}

void Handle(const orvane::base::JsonObject& frame) {
  const std::string operation = frame.Text("op").value_or("");
  if (operation == "shutdown") _exit(0);
  if (operation == "start") {
    Send(orvane::base::JsonWriter()
             .Text("op", "snapshot")
             .Raw("data", R"({"starts":)" + std::string(frame.Raw("snapshot")) + "}")
             .Take());
    return Send(R"({"op":"started","catalogue":[{"name":"test.ext","entryPoints":[]}],)"
                R"("scripts":{"test.ext":"exports.one = 1;"},"warnings":[]})");
  }
  if (operation == "sync" || operation == "post") return HandleMessage(frame);
  if (operation == "create" && frame.Text("extension") == "refuse.me") {
    return Send(orvane::base::JsonWriter()
                    .Text("op", "answer")
                    .Raw("id", frame.Raw("id"))
                    .Text("error", "refused")
                    .Take());
  }
  if (operation == "close") {
    Send(R"({"op":"event","name":"closed","data":)" + std::string(frame.Raw("context")) + "}");
  }
  if (operation == "control" && frame.Text("method") == "event") {
    Send(R"({"op":"event",)" + std::string(frame.Raw("params").substr(1)));
  }
  Answer(frame, operation == "control" ? frame.Raw("params") : "true");
}

}  // namespace

int main() {
  orvane::base::FrameReader reader;
  while (const auto body = orvane::base::ReceiveFrame(kSocket, &reader)) {
    const std::string text(*body);
    const auto frame = orvane::base::JsonObject::Parse(text);
    if (frame) Handle(*frame);
  }
  return 0;
}
