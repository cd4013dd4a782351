// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "fake_simulator.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>

namespace orvane::cli {

using picojson::value;

namespace {

// Up to the end of the head, then as much as it announces.
std::string ReadRequest(int connection, size_t* body_begin) {
  std::string bytes;
  char buffer[4096];
  size_t wanted = std::string::npos;
  while (bytes.size() < wanted) {
    const ssize_t count = recv(connection, buffer, sizeof(buffer), 0);
    if (count <= 0) break;
    bytes.append(buffer, static_cast<size_t>(count));
    const size_t end = bytes.find("\r\n\r\n");
    const size_t length = bytes.find("Content-Length: ");
    if (end == std::string::npos || length == std::string::npos) continue;
    *body_begin = end + 4;
    wanted = *body_begin + std::strtoul(bytes.c_str() + length + 16, nullptr, 10);
  }
  return bytes;
}

}  // namespace

FakeSimulator::FakeSimulator(const std::filesystem::path& state_folder, Answer answer)
    : file_(state_folder / "run" / "simulator.json"),
      answer_(std::move(answer)),
      listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof(address);
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_, generic, size) != 0 || listen(listener_, 8) != 0 ||
      getsockname(listener_, generic, &size) != 0) {
    throw std::runtime_error("no port");
  }
  port_ = ntohs(address.sin_port);
  WriteFile("pid", value(static_cast<double>(getpid())));
  thread_ = std::thread([this] { Run(); });
}

FakeSimulator::~FakeSimulator() {
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
}

void FakeSimulator::WriteFile(const std::string& member, const value& member_value) {
  const std::string origin = "http://localhost:" + std::to_string(port_);
  picojson::object run{{"url", value(origin + "/#token=secret")},
                       {"api", value(origin + "/api/call")},
                       {"token", value("secret")},
                       {"pid", value(static_cast<double>(getpid()))}};
  run[member] = member_value;
  std::filesystem::create_directories(file_.parent_path());
  std::ofstream(file_) << value(run).serialize();
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
  for (int connection = 0; (connection = accept(listener_, nullptr, nullptr)) >= 0;) {
    Serve(connection);
    close(connection);
  }
}

void FakeSimulator::Serve(int connection) {
  size_t body_begin = 0;
  const std::string bytes = ReadRequest(connection, &body_begin);
  Request request;
  request.head = bytes.substr(0, body_begin);
  picojson::parse(request.body, bytes.substr(body_begin));
  const std::string answer = answer_(request);
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    requests_.push_back(std::move(request));
  }
  send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
}

}  // namespace orvane::cli
