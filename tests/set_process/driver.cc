// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace orvane::television {

namespace fs = std::filesystem;
using picojson::object;
using picojson::value;

namespace {

constexpr time_t kMostSeconds = 60;  // of one wait

std::string OpOf(const value& frame) { return frame.get("op").to_str(); }

}  // namespace

value Json(std::string_view text) {
  value parsed;
  const std::string error = picojson::parse(parsed, std::string(text));
  if (!error.empty()) throw std::logic_error(std::string(text) + ": " + error);
  return parsed;
}

SetProcessTest::SetProcessTest() {
  std::string name = (fs::temp_directory_path() / "orvane-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp " + name);
  folder_ = fs::canonical(name);
}

SetProcessTest::~SetProcessTest() {
  CloseSocket();
  if (pid_ > 0) WaitForExit();
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

void SetProcessTest::Spawn() {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    throw std::runtime_error("socketpair");
  }
  const std::string number = std::to_string(ends[1]);
  pid_ = fork();
  if (pid_ == 0) {
    fcntl(ends[1], F_SETFD, 0);
    execl(ORVANE_COMMAND, "orvane", "set-process", "--fd", number.c_str(), "--grace", "0.2",
          nullptr);
    _exit(127);
  }
  close(ends[1]);
  socket_ = ends[0];
  const timeval limit{kMostSeconds, 0};
  setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof(limit));
  reader_ = base::FrameReader();
  kept_.clear();
}

object SetProcessTest::DefaultOptions() const {
  object options = Json(R"({"profile":"uhd","testHooks":true,"app":{
      "id":"aBcDe01234.App","package":"aBcDe01234","name":"App","version":"1.2.0",
      "metadata":[["a key","a value"]],
      "privileges":["http://tizen.org/privilege/tv.inputdevice"]}})")
                       .get<object>();
  options["state"] = value(state_folder().string());
  options["app"].get<object>()["folder"] = value(folder_.string());
  options["extensions"] = value(picojson::array{value(TESTER_EXTENSION)});
  return options;
}

value SetProcessTest::Start(const object& changes, const value& snapshot) {
  if (pid_ == 0) Spawn();
  object options = DefaultOptions();
  for (const auto& [name, changed] : changes) options[name] = changed;
  SendFrame(
      value(object{{"op", value("start")}, {"options", value(options)}, {"snapshot", snapshot}}));
  return WaitFor(
      [](const value& frame) { return OpOf(frame) == "started" || OpOf(frame) == "failed"; });
}

value SetProcessTest::Call(object request) {
  const auto id = static_cast<double>(++last_id_);
  request["id"] = value(id);
  SendFrame(value(request));
  return WaitForAnswer(id);
}

value SetProcessTest::WaitForAnswer(double id) {
  return WaitFor([&](const value& frame) {
    return OpOf(frame) == "answer" && frame.get("id").get<double>() == id;
  });
}

value SetProcessTest::Sync(int context, const std::string& text, const std::string& extension) {
  return Call({{"op", value("sync")},
               {"context", value(static_cast<double>(context))},
               {"extension", value(extension)},
               {"text", value(text)}});
}

value SetProcessTest::Orvane(int context, const std::string& command, const std::string& args) {
  const value answer =
      Sync(context, R"({"cmd":"OrvaneManager_)" + command + R"(","args":)" + args + "}");
  return Json(answer.get("result").get<std::string>());
}

std::string SetProcessTest::Runtime(const std::string& kind, const std::string& uri,
                                    const std::string& text) {
  return Call({{"op", value("runtime")},
               {"context", value(1.0)},
               {"kind", value(kind)},
               {"uri", value(uri)},
               {"text", value(text)}})
      .get("result")
      .to_str();
}

void SetProcessTest::Post(int context, const std::string& text, const std::string& extension) {
  SendFrame(value(object{{"op", value("post")},
                         {"context", value(static_cast<double>(context))},
                         {"extension", value(extension)},
                         {"text", value(text)}}));
}

void SetProcessTest::Close(int context) {
  Call({{"op", value("close")}, {"context", value(static_cast<double>(context))}});
}

value SetProcessTest::Control(const std::string& method, const std::string& parameters) {
  const value answer =
      Call({{"op", value("control")}, {"method", value(method)}, {"params", Json(parameters)}});
  EXPECT_FALSE(answer.contains("error")) << method << ": " << answer.get("error").to_str();
  return answer.get("result");
}

std::string SetProcessTest::ControlError(const std::string& method, const std::string& parameters) {
  const value answer =
      Call({{"op", value("control")}, {"method", value(method)}, {"params", Json(parameters)}});
  EXPECT_TRUE(answer.contains("error")) << method << " gave " << answer.serialize();
  return answer.get("error").to_str();
}

value SetProcessTest::State(const std::string& part) { return Control("state.get").get(part); }

// What a page wrote is the frame's body, the snapshot too.
void SetProcessTest::SendFrame(const value& frame) {
  object head = frame.get<object>();
  std::string body;
  for (const char* const name : {"text", "args", "snapshot"}) {
    const auto member = head.find(name);
    if (member == head.end()) continue;
    if (!member->second.is<picojson::null>()) {
      body =
          member->second.is<std::string>() ? member->second.to_str() : member->second.serialize();
    }
    head.erase(member);
  }
  SendFrame(value(head).serialize(), body);
}

void SetProcessTest::SendFrame(std::string_view head, std::string_view body) {
  std::string bytes;
  base::AppendFrame(head, body, &bytes);
  SendRaw(bytes);
}

void SetProcessTest::SendRaw(std::string_view bytes) { base::SendBytes(socket_, bytes); }

value SetProcessTest::WaitFor(const Predicate& predicate) {
  for (auto frame = kept_.begin(); frame != kept_.end(); ++frame) {
    if (!predicate(*frame)) continue;
    value found = std::move(*frame);
    kept_.erase(frame);
    return found;
  }
  while (const std::optional<value> frame = Receive()) {
    if (predicate(*frame)) return *frame;
    kept_.push_back(*frame);
  }
  throw std::runtime_error("the frame that was waited for did not come");
}

value SetProcessTest::WaitForOp(const std::string& op) {
  return WaitFor([&](const value& frame) { return OpOf(frame) == op; });
}

value SetProcessTest::WaitForHandling() {
  return WaitFor([](const value& frame) {
    return OpOf(frame) == "handling" && frame.get("what").to_str() != "load";
  });
}

value SetProcessTest::WaitForEvent(const std::string& name, const Predicate& of_data) {
  return WaitFor([&](const value& frame) {
           return OpOf(frame) == "event" && frame.get("name").to_str() == name &&
                  (!of_data || of_data(frame.get("data")));
         })
      .get("data");
}

std::vector<std::string> SetProcessTest::WaitForLog(const std::string& tag, size_t count) {
  std::vector<std::string> texts;
  while (texts.size() < count) {
    const value lines = WaitForEvent("log");
    for (const value& line : lines.get<picojson::array>()) {
      if (line.get("tag").to_str() == tag) texts.push_back(line.get("text").to_str());
    }
  }
  return texts;
}

std::optional<value> SetProcessTest::Receive() {
  const auto received = base::ReceiveFrame(socket_, &reader_);
  if (!received) return std::nullopt;
  value frame = Json(base::JsonText(received->head));
  object& members = frame.get<object>();
  if (members.count("error") != 0) members["error"] = value(members["error"]).get("message");
  if (OpOf(frame) == "answer") {
    if (members.count("result") + members.count("error") == 0) {
      members["result"] = value(std::string(received->body));
    }
  } else if (OpOf(frame) == "snapshot") {
    members["data"] = Json(received->body);
  } else if (frame.get("name").to_str() == "log" && OpOf(frame) == "event") {
    picojson::array lines;
    std::istringstream text{std::string(received->body)};
    for (std::string line; std::getline(text, line);) lines.push_back(Json(line));
    members["data"] = value(lines);
  } else {
    members["text"] = value(std::string(received->body));
  }
  return frame;
}

void SetProcessTest::CloseSocket() {
  if (socket_ >= 0) close(socket_);
  socket_ = -1;
}

int SetProcessTest::WaitForExit() {
  int status = 0;
  if (waitpid(pid_, &status, 0) != pid_) throw std::runtime_error("waitpid");
  pid_ = 0;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void SetProcessTest::Kill() {
  kill(pid_, SIGKILL);
  WaitForExit();
  CloseSocket();
}

}  // namespace orvane::television
