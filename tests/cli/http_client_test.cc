// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/http_client.h"

#include <atomic>
#include <functional>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/net.h"

namespace orvane::cli {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;
using testing::ThrowsMessage;

constexpr milliseconds kShort{150};
constexpr milliseconds kLong{30000};

// A server that does one thing with one connection, then waits for its client to leave.
class HttpClientTest : public testing::Test {
 protected:
  using Behaviour = std::function<void(tcp::socket&)>;

  ~HttpClientTest() override {
    if (thread_.joinable()) thread_.join();
  }

  LocalAddress Serve(const Behaviour& behaviour) {
    thread_ = std::thread([this, behaviour] {
      tcp::socket socket = listener_.accept();
      behaviour(socket);
      beast::error_code ignored;
      char bytes[64];
      while (!ignored) socket.read_some(asio::buffer(bytes), ignored);
    });
    return address();
  }
  LocalAddress address() const {
    return {"localhost", std::to_string(listener_.local_endpoint().port())};
  }
  static void Post(const LocalAddress& address, milliseconds patience) {
    HttpPost(address, "/", {}, "{}", patience);
  }

 private:
  asio::io_context loop_;
  tcp::acceptor listener_{loop_, {asio::ip::address_v4::loopback(), 0}};
  std::thread thread_;
};

TEST_F(HttpClientTest, GivesUpOneThatHangs) {
  const LocalAddress server = Serve([](tcp::socket&) {});
  EXPECT_THAT([&] { Post(server, kShort); },
              ThrowsMessage<HttpError>(HasSubstr("no answer came in time")));
}

TEST_F(HttpClientTest, GivesUpOneWhoseAnswerDrips) {
  const LocalAddress server = Serve([](tcp::socket& socket) {
    asio::write(socket,
                asio::buffer(std::string("HTTP/1.1 200 OK\r\nContent-Length: 999\r\n\r\n")));
    beast::error_code error;
    while (!error) {
      asio::write(socket, asio::buffer("x", 1), error);
      std::this_thread::sleep_for(milliseconds(5));
    }
  });
  EXPECT_THAT([&] { Post(server, kShort); },
              ThrowsMessage<HttpError>(HasSubstr("no answer came in time")));
}

TEST_F(HttpClientTest, SaysThatNobodyListens) {
  const auto closed = [] {
    asio::io_context loop;
    return tcp::acceptor(loop, {asio::ip::address_v4::loopback(), 0}).local_endpoint().port();
  }();
  EXPECT_THAT(
      [&] {
        Post({"localhost", std::to_string(closed)}, kLong);
      },
      ThrowsMessage<NobodyListens>(HasSubstr("nobody answers at localhost:")));
}

TEST_F(HttpClientTest, GivesUpASocketThatIsNeverOpened) {
  const LocalAddress server = Serve([](tcp::socket&) {});
  EXPECT_THAT([&] { MessageStream(server, "/api", kShort); },
              ThrowsMessage<HttpError>(HasSubstr("no answer came in time")));
}

TEST_F(HttpClientTest, EndsAStreamWhoseServerHangs) {
  const LocalAddress server = Serve([](tcp::socket& socket) {
    beast::flat_buffer buffer;
    http::request<http::string_body> upgrade;
    http::read(socket, buffer, upgrade);
    websocket::stream<tcp::socket&> stream(socket);
    stream.accept(upgrade);
    stream.write(asio::buffer(std::string("first")));
  });
  MessageStream stream(server, "/api", kShort);
  EXPECT_EQ(stream.Next(), "first");
  EXPECT_EQ(stream.Next(), std::nullopt);
}

TEST(LocalAddressTest, IsOfThisMachine) {
  EXPECT_EQ(ParseLocalAddress("http://localhost:8631/x")->port, "8631");
  EXPECT_TRUE(ParseLocalAddress("http://app.localhost:1/"));
  EXPECT_TRUE(ParseLocalAddress("http://[::1]:80"));
  for (const char* url : {"http://example.org:80/", "http://localhost.example.org:80/",
                          "http://localhost:123456/", "http://localhost", "localhost:80", ""}) {
    EXPECT_FALSE(ParseLocalAddress(url)) << url;
  }
}

}  // namespace
}  // namespace orvane::cli
