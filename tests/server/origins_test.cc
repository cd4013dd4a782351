// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/origins.h"

#include <sys/socket.h>

#include <string>

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>

#include "base/net.h"
#include "raw_client.h"
#include "server/run_server.h"

namespace orvane::server {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

constexpr uint16_t kUsualPort = 8630;

// Another program that listens on a port; 0: any.
class Taken {
 public:
  explicit Taken(uint16_t port) : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    is_mine_ = bind(socket_.get(), generic, size) == 0 && listen(socket_.get(), 1) == 0 &&
               getsockname(socket_.get(), generic, &size) == 0;
    port_ = ntohs(address.sin_port);
  }
  bool is_mine() const { return is_mine_; }  // otherwise somebody else has it
  uint16_t port() const { return port_; }

 private:
  base::UniqueFd socket_;
  uint16_t port_ = 0;
  bool is_mine_ = false;
};

class OriginsTest : public testing::Test {
 protected:
  Origins Listen(std::optional<uint16_t> port) { return ListenOnLoopback(app_, simulator_, port); }
  uint16_t app_port() const { return app_.port(); }
  uint16_t simulator_port() const { return simulator_.port(); }

 private:
  asio::io_context loop_;
  HttpServer app_{loop_, Limits{}};
  HttpServer simulator_{loop_, Limits{}};
};

// A port that was free a moment ago, and so is most likely the one after it.
uint16_t FreePort() { return Taken(0).port(); }

TEST_F(OriginsTest, TakesAnyPortsForPortZero) {
  const Origins origins = Listen(0);
  EXPECT_EQ(origins.app.host, "127.0.0.1:" + std::to_string(app_port()));
  EXPECT_EQ(origins.simulator.host, "localhost:" + std::to_string(simulator_port()));
  EXPECT_NE(app_port(), simulator_port());
}

TEST_F(OriginsTest, TakesTheNextFreePortWhereTheUsualOneIsTaken) {
  const Taken usual(kUsualPort);  // by this test, or by somebody else
  Listen(std::nullopt);
  EXPECT_GT(app_port(), kUsualPort);
  EXPECT_GT(simulator_port(), app_port());
}

TEST_F(OriginsTest, SaysThatAPortThatWasAskedForIsTaken) {
  const Taken taken(0);
  ASSERT_TRUE(taken.is_mine());
  EXPECT_THAT(
      [&] { Listen(taken.port()); },
      ThrowsMessage<std::runtime_error>(HasSubstr("port " + std::to_string(taken.port()) +
                                                  " is taken or may not be used; choose another")));
}

TEST_F(OriginsTest, PassesOverATakenPortForTheSimulator) {
  const uint16_t port = FreePort();
  const Taken next(static_cast<uint16_t>(port + 1));
  Listen(port);
  EXPECT_EQ(app_port(), port);
  EXPECT_GT(simulator_port(), port + 1);
}

TEST_F(OriginsTest, ReachesTheSimulatorByBothAddressesOfThisMachine) {
  Listen(0);
  EXPECT_TRUE(RawClient(simulator_port()).is_connected());
  const base::UniqueFd v6(socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in6 here{};
  here.sin6_family = AF_INET6;
  here.sin6_addr = in6addr_loopback;
  const bool has_v6 = bind(v6.get(), reinterpret_cast<sockaddr*>(&here), sizeof here) == 0;
  EXPECT_EQ(RawClient(simulator_port(), "::1").is_connected(), has_v6);
}

}  // namespace
}  // namespace orvane::server
