// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "fake_simulator.h"

#include <sys/socket.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <utility>

namespace orvane::cli {

FakeSimulator::FakeSimulator(const std::filesystem::path& state_folder, Answer answer)
    : file_(state_folder / "run" / "simulator.json"),
      answer_(std::move(answer)),
      listener_(loop_, {asio::ip::address_v4::loopback(), 0}) {
  WriteFile("pid", getpid());
  thread_ = std::thread([this] { Run(); });
}

FakeSimulator::~FakeSimulator() {
  shutdown(listener_.native_handle(), SHUT_RDWR);
  thread_.join();
}

void FakeSimulator::WriteFile(const std::string& member, const Json& member_value) {
  const std::string origin =
      "http://localhost:" + std::to_string(listener_.local_endpoint().port());
  Json run{{"url", origin + "/#token=secret"},
           {"api", origin + "/api/call"},
           {"token", "secret"},
           {"pid", getpid()}};
  run[member] = member_value;
  std::filesystem::create_directories(file_.parent_path());
  std::ofstream(file_) << run;
}

std::vector<FakeSimulator::Request> FakeSimulator::requests() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return requests_;
}

std::string FakeSimulator::Ok(const std::string& json) {
  return "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " +
         std::to_string(json.size()) + "\r\n\r\n" + json;
}

void FakeSimulator::Run() {
  beast::error_code error;
  while (!error) {
    tcp::socket connection = listener_.accept(error);
    if (!error) {
      served_.push_back(
          std::async(std::launch::async, &FakeSimulator::Serve, this, std::move(connection)));
    }
  }
}

void FakeSimulator::Serve(tcp::socket connection) {
  beast::flat_buffer buffer;
  http::request<http::string_body> read;
  beast::error_code error;
  http::read(connection, buffer, read, error);
  if (error) return;
  if (websocket::is_upgrade(read) && !messages_.empty()) {
    return SendMessages(std::move(connection), read);
  }
  std::ostringstream head;
  head << read.base();
  Request request{head.str(), read.body().empty() ? Json() : Json::parse(read.body())};
  const std::string answer = answer_(request);
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    requests_.push_back(std::move(request));
  }
  asio::write(connection, asio::buffer(answer), error);
}

void FakeSimulator::SendMessages(tcp::socket connection,
                                 const http::request<http::string_body>& upgrade) {
  websocket::stream<tcp::socket> stream(std::move(connection));
  beast::error_code error;
  stream.accept(upgrade, error);
  for (const std::string& message : messages_) stream.write(asio::buffer(message), error);
  stream.close(websocket::close_code::normal, error);
}

}  // namespace orvane::cli
