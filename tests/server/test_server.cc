// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "test_server.h"

#include <cstdlib>
#include <fstream>
#include <future>
#include <utility>

#include "base/json.h"

namespace orvane::server {

namespace fs = std::filesystem;

namespace {

uint16_t PortOf(const std::string& url) {
  return static_cast<uint16_t>(std::atoi(url.c_str() + url.find(':', 7) + 1));
}

}  // namespace

ServerTest::ServerTest() {
  std::string pattern = (fs::temp_directory_path() / "orvane-server-XXXXXX").string();
  folder_ = mkdtemp(pattern.data());
  fs::create_directories(app_folder());
  WriteFile("index.html", "<!doctype html><html><head><title>x</title></head></html>");
  options_.app.id = "0123456789.App";
  options_.app.package = "0123456789";
  options_.app.name = "App";
  options_.app.content = "index.html";
  options_.app.folder = app_folder();
  options_.set_process_command = {FAKE_SET_PROCESS};
  options_.set.state_folder = folder_ / "state";
  options_.port = 0;
  options_.watch = false;
}

ServerTest::~ServerTest() {
  StopServer();
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

void ServerTest::Start() {
  std::promise<RunAddresses> ready;
  options_.on_ready = [&](const RunAddresses& addresses) { ready.set_value(addresses); };
  server_ = std::make_unique<RunServer>(options_);
  thread_ = std::thread([this] { server_->Run(); });
  const RunAddresses addresses = ready.get_future().get();
  app_port_ = PortOf(addresses.app);
  simulator_port_ = PortOf(addresses.simulator);
  secret_ = addresses.simulator.substr(addresses.simulator.find("#token=") + 7);
}

void ServerTest::StopServer() {
  if (!thread_.joinable()) return;
  server_->Stop();
  thread_.join();
  server_.reset();
}

void ServerTest::WriteFile(const std::string& path, const std::string& text) const {
  const fs::path file = app_folder() / path;
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << text;
}

RawResponse ServerTest::Get(const std::string& target, RawClient::Headers more) const {
  more.emplace_back("Host", app_host());
  return RawClient(app_port_).Request("GET", target, more);
}

std::string ServerTest::Call(const std::string& method, const std::string& params) const {
  const std::string body = "{\"method\":" + base::JsonText(method) + ",\"params\":" + params + "}";
  return RawClient(simulator_port_)
      .Request("POST", "/api/call", {{"Host", simulator_host()}, {"X-Orvane-Token", secret_}}, body)
      .body;
}

std::string ServerTest::CallUntil(const std::string& method, const std::string& text) const {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  std::string answer;
  do {
    answer = Call(method);
    std::this_thread::sleep_for(
        std::chrono::milliseconds(2));  // the server needs the processor too
  } while (answer.find(text) == std::string::npos && std::chrono::steady_clock::now() < end);
  return answer;
}

TestPage ServerTest::OpenPage() const {
  const std::string script = Get("/.orvane/page.js", {{"Sec-Fetch-Site", "same-origin"}}).body;
  const size_t boot = script.find(R"(({"app":)");
  const size_t begin = script.find(R"("context":)", boot) + 10;
  const size_t token = script.find(R"("token":")", boot) + 9;
  const std::string context = script.substr(begin, script.find(',', begin) - begin);
  return {"?token=" + script.substr(token, 32) + "&context=" + context, RawClient(app_port_)};
}

TestPage ServerTest::ConnectPage() const {
  TestPage page = OpenPage();
  Connect(page, 0);
  EXPECT_EQ(page.client.ReceiveText(), R"({"received":0,"type":"hello"})");
  return page;
}

void ServerTest::Connect(TestPage& page, int last_received) const {
  page.client = RawClient(app_port_);
  EXPECT_EQ(
      page.client.Upgrade("/.orvane/socket" + page.query + "&last=" + std::to_string(last_received),
                          {{"Host", app_host()}, {"Origin", app_origin()}}),
      101);
}

RawResponse ServerTest::Sync(const TestPage& page, const std::string& message) const {
  return RawClient(app_port_).Request("POST", "/.orvane/sync" + page.query,
                                      {{"Host", app_host()}, {"Origin", app_origin()}}, message);
}

std::string ServerTest::Message(int id, const std::string& command, const std::string& more) {
  const Json head{{"type", "sync"}, {"id", id}, {"extension", "test.ext"}};
  return base::JsonText(head) + "\n{\"cmd\":\"" + command + "\"" + more + "}";
}

}  // namespace orvane::server
