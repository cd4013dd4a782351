// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pictures/devtools_pipe.h"

#include <sys/socket.h>
#include <unistd.h>

#include <future>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvane::server {
namespace {

using ::testing::HasSubstr;
using ::testing::ThrowsMessage;

// A browser that says one thing, whatever it is asked. It ends when the pipe does.
class DevToolsPipeTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, sockets_), 0); }
  ~DevToolsPipeTest() override { close(sockets_[1]); }

  // Calls while the browser says it.
  Json CallAnswered(const std::string& text) {
    DevToolsPipe pipe(sockets_[0]);
    const auto said = std::async(std::launch::async, [&] {
      size_t sent = 0;
      while (sent <= text.size()) {  // c_str() has the zero byte
        const ssize_t count =
            send(sockets_[1], text.c_str() + sent, text.size() + 1 - sent, MSG_NOSIGNAL);
        if (count <= 0) return;
        sent += static_cast<size_t>(count);
      }
    });
    return pipe.Call("Page.navigate", Json::object(), "",
                     std::chrono::steady_clock::now() + std::chrono::seconds(60));
  }

 private:
  int sockets_[2] = {-1, -1};
};

TEST_F(DevToolsPipeTest, ReturnsTheResult) {
  EXPECT_EQ(CallAnswered(R"({"id":1,"result":{"frameId":"7"}})"), Json({{"frameId", "7"}}));
}

TEST_F(DevToolsPipeTest, SaysWhatTheBrowserRefuses) {
  EXPECT_THAT([this] { CallAnswered(R"({"id":1,"error":{"message":"no such page"}})"); },
              ThrowsMessage<std::runtime_error>(HasSubstr("Page.navigate: \"no such page\"")));
}

TEST_F(DevToolsPipeTest, SaysThatAMessageIsNoJson) {
  EXPECT_THAT([this] { CallAnswered("{"); },
              ThrowsMessage<std::runtime_error>(HasSubstr("no message")));
}

TEST_F(DevToolsPipeTest, EndsNothingWhereAMessageNestsDeep) {
  constexpr int kLevels = 100000;
  std::string text;
  for (int i = 0; i < kLevels; ++i) text += R"({"result":)";
  EXPECT_THAT([&] { CallAnswered(text + "1" + std::string(kLevels, '}')); },
              ThrowsMessage<std::runtime_error>(HasSubstr("nests deeper")));
}

}  // namespace
}  // namespace orvane::server
