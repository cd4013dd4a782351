// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace orvane::television {

namespace fs = std::filesystem;

namespace {

constexpr time_t kMostSeconds = 60;  // of one wait

std::string OpOf(const Json& frame) { return frame.at("op").get<std::string>(); }

}  // namespace

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
  in_hand_ = std::make_unique<set_process::MessageInHand>();
  const std::string memory = std::to_string(in_hand_->descriptor());
  pid_ = fork();
  if (pid_ == 0) {
    fcntl(ends[1], F_SETFD, 0);
    fcntl(in_hand_->descriptor(), F_SETFD, 0);
    execl(ORVANE_COMMAND, "orvane", "set-process", "--fd", number.c_str(), "--memory",
          memory.c_str(), "--grace", "0.2", nullptr);
    _exit(127);
  }
  close(ends[1]);
  socket_ = ends[0];
  const timeval limit{kMostSeconds, 0};
  setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof(limit));
  reader_ = base::FrameReader();
  kept_.clear();
}

Json SetProcessTest::DefaultOptions() const {
  Json options = base::ParseJson(R"({"profile":"uhd","testHooks":true,"app":{
      "id":"aBcDe01234.App","package":"aBcDe01234","name":"App","version":"1.2.0",
      "metadata":[["a key","a value"]],
      "privileges":["http://tizen.org/privilege/tv.inputdevice"]}})");
  options["state"] = state_folder().string();
  options["app"]["folder"] = folder_.string();
  options["extensions"] = Json::array({TESTER_EXTENSION});
  return options;
}

Json SetProcessTest::Start(const Json& changes, const Json& snapshot) {
  if (pid_ == 0) Spawn();
  Json options = DefaultOptions();
  options.update(changes);
  SendFrame({{"op", "start"}, {"options", options}, {"snapshot", snapshot}});
  return WaitFor(
      [](const Json& frame) { return OpOf(frame) == "started" || OpOf(frame) == "failed"; });
}

Json SetProcessTest::Call(Json request) {
  request["id"] = ++last_id_;
  SendFrame(request);
  return WaitForAnswer(last_id_);
}

Json SetProcessTest::WaitForAnswer(int64_t id) {
  return WaitFor(
      [&](const Json& frame) { return OpOf(frame) == "answer" && frame.at("id") == id; });
}

Json SetProcessTest::Sync(int context, const std::string& text, const std::string& extension) {
  return Call({{"op", "sync"}, {"context", context}, {"extension", extension}, {"text", text}});
}

Json SetProcessTest::Orvane(int context, const std::string& command, const std::string& args) {
  const Json answer =
      Sync(context, R"({"cmd":"OrvaneManager_)" + command + R"(","args":)" + args + "}");
  return base::ParseJson(answer.at("result").get<std::string>());
}

std::string SetProcessTest::Runtime(const std::string& kind, const std::string& uri,
                                    const std::string& text) {
  const Json result =
      Call({{"op", "runtime"}, {"context", 1}, {"kind", kind}, {"uri", uri}, {"text", text}})
          .at("result");
  return result.is_string() ? result.get<std::string>() : result.dump();
}

void SetProcessTest::Post(int context, const std::string& text, const std::string& extension) {
  SendFrame({{"op", "post"}, {"context", context}, {"extension", extension}, {"text", text}});
}

void SetProcessTest::Close(int context) { Call({{"op", "close"}, {"context", context}}); }

Json SetProcessTest::Control(const std::string& method, const std::string& parameters) {
  const Json answer =
      Call({{"op", "control"}, {"method", method}, {"params", base::ParseJson(parameters)}});
  EXPECT_FALSE(answer.contains("error")) << method << ": " << answer.at("error").get<std::string>();
  return answer.at("result");
}

std::string SetProcessTest::ControlError(const std::string& method, const std::string& parameters) {
  const Json answer =
      Call({{"op", "control"}, {"method", method}, {"params", base::ParseJson(parameters)}});
  EXPECT_TRUE(answer.contains("error")) << method << " gave " << answer.dump();
  return answer.at("error").get<std::string>();
}

Json SetProcessTest::State(const std::string& part) { return Control("state.get").at(part); }

Json SetProcessTest::Setting(const std::string& key) {
  for (const Json& setting : State("settings")) {
    if (setting.at("key") == key) return setting;
  }
  return nullptr;
}

// What a page wrote is the frame's body, the snapshot too.
void SetProcessTest::SendFrame(const Json& frame) {
  Json head = frame;
  std::string body;
  for (const char* const name : {"text", "args", "snapshot"}) {
    const auto member = head.find(name);
    if (member == head.end()) continue;
    if (!member->is_null())
      body = member->is_string() ? member->get<std::string>() : member->dump();
    head.erase(member);
  }
  SendFrame(head.dump(), body);
}

void SetProcessTest::SendFrame(std::string_view head, std::string_view body) {
  std::string bytes;
  base::AppendFrame(head, body, &bytes);
  SendRaw(bytes);
}

void SetProcessTest::SendRaw(std::string_view bytes) { base::SendBytes(socket_, bytes); }

Json SetProcessTest::WaitFor(const Predicate& predicate) {
  for (auto frame = kept_.begin(); frame != kept_.end(); ++frame) {
    if (!predicate(*frame)) continue;
    Json found = std::move(*frame);
    kept_.erase(frame);
    return found;
  }
  while (const std::optional<Json> frame = Receive()) {
    if (predicate(*frame)) return *frame;
    kept_.push_back(*frame);
  }
  throw std::runtime_error("the frame that was waited for did not come");
}

Json SetProcessTest::WaitForOp(const std::string& op) {
  return WaitFor([&](const Json& frame) { return OpOf(frame) == op; });
}

set_process::HandledMessage SetProcessTest::WaitForMessage(const std::string& what) {
  constexpr std::chrono::milliseconds kTick{1};
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(kMostSeconds);
  while (std::chrono::steady_clock::now() < end) {
    const auto message = in_hand_->Last();
    if (message && message->what == what) return *message;
    std::this_thread::sleep_for(kTick);
  }
  throw std::runtime_error("the process did not begin with a message of " + what);
}

Json SetProcessTest::WaitForEvent(const std::string& name, const Predicate& of_data) {
  return WaitFor([&](const Json& frame) {
           return OpOf(frame) == "event" && frame.at("name") == name &&
                  (!of_data || of_data(frame.at("data")));
         })
      .at("data");
}

std::vector<std::string> SetProcessTest::WaitForLog(const std::string& tag, size_t count) {
  std::vector<std::string> texts;
  while (texts.size() < count) {
    const Json lines = WaitForEvent("log");
    for (const Json& line : lines) {
      if (line.at("tag") == tag) texts.push_back(line.at("text"));
    }
  }
  return texts;
}

std::optional<Json> SetProcessTest::Receive() {
  const auto received = base::ReceiveFrame(socket_, &reader_);
  if (!received) return std::nullopt;
  Json frame = received->head;
  const std::string body(received->body);
  if (frame.contains("error")) frame["error"] = Json(frame["error"]["message"]);
  if (OpOf(frame) == "answer") {
    if (!frame.contains("result") && !frame.contains("error")) frame["result"] = body;
  } else if (OpOf(frame) == "snapshot") {
    frame["data"] = base::ParseJson(body);
  } else if (OpOf(frame) == "event" && frame.at("name") == "log") {
    frame["data"] = Json::array();
    std::istringstream lines(body);
    for (std::string line; std::getline(lines, line);) {
      frame["data"].push_back(base::ParseJson(line));
    }
  } else {
    frame["text"] = body;
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
