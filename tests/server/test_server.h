// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "raw_client.h"
#include "server/run_server.h"

namespace orvane::server {

// A page of the application, as its runtime's script sees the server.
struct TestPage {
  std::string query;  // of its requests
  RawClient client;   // its socket, once it is open
};

// A running server with an application's folder of its own and a set process that does as it is
// told.
class ServerTest : public testing::Test {
 protected:
  ServerTest();
  ~ServerTest() override;

  // Changes the options before the server starts.
  RunOptions& options() { return options_; }
  void Start();
  void StopServer();

  void WriteFile(const std::string& path, const std::string& text) const;
  const std::filesystem::path& folder() const { return folder_; }
  std::filesystem::path app_folder() const { return folder_ / "app"; }

  std::string app_host() const { return "127.0.0.1:" + std::to_string(app_port_); }
  std::string app_origin() const { return "http://" + app_host(); }
  std::string simulator_host() const { return "localhost:" + std::to_string(simulator_port_); }
  std::string simulator_origin() const { return "http://" + simulator_host(); }
  uint16_t app_port() const { return app_port_; }
  uint16_t simulator_port() const { return simulator_port_; }
  const std::string& secret() const { return secret_; }

  RawResponse Get(const std::string& target, RawClient::Headers more = {}) const;
  // The answer's text, to a call by the command line's way.
  std::string Call(const std::string& method, const std::string& params = "{}") const;
  // Calls until the answer has the text in it.
  std::string CallUntil(const std::string& method, const std::string& text) const;
  TestPage OpenPage() const;     // loads the page's script
  TestPage ConnectPage() const;  // and opens its socket, up to the first frame
  void Connect(TestPage& page, int last_received) const;
  RawResponse Sync(const TestPage& page, const std::string& message) const;
  // A native message whose text is the JSON object with that command.
  static std::string Message(int id, const std::string& command, const std::string& more = "");

 private:
  std::filesystem::path folder_;
  RunOptions options_;
  std::unique_ptr<RunServer> server_;
  std::thread thread_;
  uint16_t app_port_ = 0;
  uint16_t simulator_port_ = 0;
  std::string secret_;
};

}  // namespace orvane::server
