// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "base/json.h"
#include "base/net.h"

namespace orvane::cli {

// Stands in for the simulator of a state folder: an HTTP server on a free port of this machine, and
// the file that leads to it. Each connection gives one request and gets one answer, or is a socket
// on which some messages come.
class FakeSimulator {
 public:
  struct Request {
    std::string head;  // request line and headers
    Json body;
  };
  // The whole answer, head and all; an empty one closes the connection without a word.
  using Answer = std::function<std::string(const Request& request)>;

  FakeSimulator(const std::filesystem::path& state_folder, Answer answer);
  ~FakeSimulator();
  FakeSimulator(const FakeSimulator&) = delete;
  FakeSimulator& operator=(const FakeSimulator&) = delete;

  // Writes the file once more, with another member.
  void WriteFile(const std::string& member, const Json& value);
  // What each socket brings before it is closed.
  void set_messages(std::vector<std::string> messages) { messages_ = std::move(messages); }
  std::vector<Request> requests() const;

  static std::string Ok(const std::string& json);  // with that body and its length
  static std::string Result(const std::string& json) { return Ok("{\"result\":" + json + "}"); }

 private:
  void Run();
  void Serve(tcp::socket connection);
  void SendMessages(tcp::socket connection, const http::request<http::string_body>& upgrade);

  const std::filesystem::path file_;
  const Answer answer_;
  std::vector<std::string> messages_;
  asio::io_context loop_;
  tcp::acceptor listener_;
  mutable std::mutex mutex_;
  std::vector<Request> requests_;          // guarded by mutex_
  std::vector<std::future<void>> served_;  // of the thread
  std::thread thread_;
};

}  // namespace orvane::cli
