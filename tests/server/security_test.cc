// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "server/web/secret.h"
#include "test_server.h"

namespace orvane::server {
namespace {

using testing::HasSubstr;
using testing::Not;

class SecurityTest : public ServerTest {
 protected:
  SecurityTest() { std::ofstream(folder() / "secret.txt") << "outside"; }
};

TEST_F(SecurityTest, AnswersUnderItsOwnHostNameOnly) {
  Start();
  for (const std::string& host :
       {std::string("evil.example:") + std::to_string(app_port()),
        "localhost:" + std::to_string(app_port()), std::string("127.0.0.1"), std::string()}) {
    const RawResponse response =
        RawClient(app_port()).Request("GET", "/index.html", {{"Host", host}});
    EXPECT_EQ(response.status, 403) << host;
  }
  EXPECT_EQ(RawClient(app_port()).Request("GET", "/index.html", {}).status, 403);
  EXPECT_EQ(RawClient(simulator_port()).Request("GET", "/", {{"Host", "evil.example"}}).status,
            403);
}

TEST_F(SecurityTest, RefusesASecondHostHeader) {
  Start();
  EXPECT_EQ(RawClient(app_port())
                .Request("GET", "/index.html", {{"Host", app_host()}, {"Host", "evil.example"}})
                .status,
            403);
}

TEST_F(SecurityTest, ListensOnLoopbackOnly) {
  Start();
  EXPECT_TRUE(RawClient(app_port()).is_connected());
  EXPECT_FALSE(RawClient(app_port(), "::1").is_connected());
  // Every address of 127.0.0.0/8 is this machine's, so that a wildcard would be reached there.
  EXPECT_FALSE(RawClient(app_port(), "127.0.0.2").is_connected());
  EXPECT_FALSE(RawClient(simulator_port(), "127.0.0.2").is_connected());
}

TEST_F(SecurityTest, RefusesRequestsOfForeignPages) {
  Start();
  EXPECT_EQ(Get("/index.html", {{"Origin", "http://evil.example"}}).status, 403);
  EXPECT_EQ(Get("/index.html", {{"Origin", "null"}}).status, 403);
  EXPECT_EQ(Get("/index.html", {{"Origin", simulator_origin()}}).status, 403);
  EXPECT_EQ(
      Get("/index.html", {{"Sec-Fetch-Site", "cross-site"}, {"Sec-Fetch-Mode", "no-cors"}}).status,
      403);
}

TEST_F(SecurityTest, LetsTheSimulatorAloneFrameTheApplication) {
  Start();
  const RawResponse response =
      Get("/index.html", {{"Sec-Fetch-Site", "cross-site"}, {"Sec-Fetch-Mode", "navigate"}});
  EXPECT_EQ(response.status, 200);
  EXPECT_TRUE(response.Has("Content-Security-Policy: frame-ancestors 'self' " + simulator_origin() +
                           "\r\n"));
}

TEST_F(SecurityTest, IsolatesPagesUnlessToldNotTo) {
  Start();
  EXPECT_TRUE(Get("/index.html").Has("Cross-Origin-Embedder-Policy: credentialless\r\n"));
  StopServer();
  options().isolate = false;
  Start();
  EXPECT_THAT(Get("/index.html").head, Not(HasSubstr("Embedder")));
}

TEST_F(SecurityTest, GivesThePageScriptToOwnPagesOnly) {
  Start();
  EXPECT_EQ(Get("/.orvane/page.js").status, 403);
  EXPECT_EQ(Get("/.orvane/page.js", {{"Referer", "http://evil.example/"}}).status, 403);
  EXPECT_EQ(
      Get("/.orvane/page.js", {{"Sec-Fetch-Site", "none"}, {"Referer", app_origin() + "/"}}).status,
      403);
  const RawResponse response = Get("/.orvane/page.js", {{"Referer", app_origin() + "/"}});
  EXPECT_EQ(response.status, 200);
  EXPECT_TRUE(response.Has("Cross-Origin-Resource-Policy: same-origin\r\n"));
  EXPECT_TRUE(response.Has("Cache-Control: no-store\r\n"));
}

TEST_F(SecurityTest, RefusesThePagesSocketWithoutItsOrigin) {
  Start();
  const TestPage page = OpenPage();
  const std::string target = "/.orvane/socket" + page.query;
  EXPECT_EQ(RawClient(app_port()).Upgrade(target, {{"Host", app_host()}}), 403);
  EXPECT_EQ(RawClient(app_port())
                .Upgrade(target, {{"Host", app_host()}, {"Origin", "http://evil.example"}}),
            403);
}

TEST_F(SecurityTest, TellsAPageWithAWrongSecretThatItIsGone) {
  Start();
  TestPage page = OpenPage();
  page.query[7] = page.query[7] == '0' ? '1' : '0';
  Connect(page, 0);
  EXPECT_EQ(page.client.ReceiveText(), R"({"type":"gone"})");
  EXPECT_EQ(Sync(page, Message(1, "echo")).status, 403);
}

TEST_F(SecurityTest, RefusesTheSimulatorsInterfaceWithoutTheSecret) {
  Start();
  const RawClient::Headers headers{{"Host", simulator_host()}};
  EXPECT_EQ(RawClient(simulator_port()).Request("POST", "/api/call", headers, "{}").status, 403);
  RawClient socket(simulator_port());
  EXPECT_EQ(socket.Upgrade("/api?token=" + std::string(32, '0'), headers), 101);
  EXPECT_FALSE(socket.ReceiveText());
  EXPECT_EQ(socket.close_code(), 4403);
}

TEST_F(SecurityTest, RefusesTheSimulatorsInterfaceToForeignPagesWithTheSecret) {
  Start();
  for (const std::string& origin : {std::string("http://evil.example"), app_origin()}) {
    const RawClient::Headers headers{{"Host", simulator_host()}, {"Origin", origin}};
    EXPECT_EQ(RawClient(simulator_port()).Upgrade("/api?token=" + secret(), headers), 403);
  }
}

TEST_F(SecurityTest, GivesTheSimulatorsPageAStrictPolicy) {
  Start();
  const RawResponse response =
      RawClient(simulator_port()).Request("GET", "/", {{"Host", simulator_host()}});
  EXPECT_EQ(response.status, 200);
  EXPECT_THAT(response.head, HasSubstr("Content-Security-Policy: default-src 'none'; "));
  EXPECT_THAT(response.head, HasSubstr("frame-ancestors 'none'"));
  EXPECT_THAT(response.head, Not(HasSubstr("unsafe")));
}

TEST_F(SecurityTest, ServesNothingOutsideTheFolder) {
  std::filesystem::create_symlink(folder() / "secret.txt", app_folder() / "link.txt");
  std::filesystem::create_directory_symlink(folder(), app_folder() / "up");
  Start();
  const std::vector<std::string> targets{"/../secret.txt",
                                         "/%2e%2e/secret.txt",
                                         "/%2E%2E%2Fsecret.txt",
                                         "/x/../../secret.txt",
                                         "/..%5csecret.txt",
                                         "/..\\secret.txt",
                                         "/index.html%00.txt",
                                         "/link.txt",
                                         "/up/secret.txt",
                                         "//../secret.txt",
                                         "/.%2e/secret.txt",
                                         "/%",
                                         "/%zz",
                                         "secret.txt",
                                         "http://127.0.0.1/../secret.txt",
                                         "/index.html/../../secret.txt"};
  for (const std::string& target : targets) {
    const RawResponse response = Get(target);
    EXPECT_GE(response.status, 400) << target;
    EXPECT_THAT(response.body, Not(HasSubstr("outside"))) << target;
  }
}

TEST_F(SecurityTest, RefusesHeadersAndBodiesThatAreTooLong) {
  options().limits.body_bytes = 1000;
  Start();
  EXPECT_EQ(Get("/index.html", {{"X-Long", std::string(100000, 'x')}}).status, 431);
  EXPECT_EQ(RawClient(app_port())
                .Request("POST", "/.orvane/sync", {{"Host", app_host()}}, std::string(2000, 'x'))
                .status,
            413);
}

TEST_F(SecurityTest, DisconnectsAPageWhoseMessageIsTooLong) {
  options().limits.message_bytes = 1000;
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(std::string(2000, ' '));
  EXPECT_FALSE(page.client.ReceiveText());
}

TEST_F(SecurityTest, AnswersAMessageThatIsTooLongForTheSetProcess) {
  Start();
  const TestPage page = OpenPage();
  const std::string message =
      Message(1, "echo", R"(,"more":")" + std::string(size_t{16} << 20U, 'x') + "\"");
  EXPECT_THAT(Sync(page, message).body, HasSubstr("the set process takes at most 16776192"));
  EXPECT_THAT(Sync(page, Message(2, "echo")).body, HasSubstr(R"({"id":2,"type":"answer")"));
  EXPECT_THAT(Call(std::string(size_t{16} << 20U, 'x')), HasSubstr("send less at a time"));
  EXPECT_THAT(Sync(page, Message(3, "echo")).body, HasSubstr(R"({"id":3,"type":"answer")"));
}

TEST_F(SecurityTest, DropsAPostThatIsTooLongForTheSetProcessAndSaysSo) {
  Start();
  const std::string text(size_t{16} << 20U, 'x');
  Sync(OpenPage(), R"({"type":"post","id":1,"extension":"test.ext"})"
                   "\n" +
                       text);
  EXPECT_THAT(Call("explain.list"), HasSubstr("A posted message was dropped"));
}

TEST_F(SecurityTest, DisconnectsAClientThatDoesNotSendItsRequest) {
  options().limits.request_time = std::chrono::seconds(1);
  Start();
  RawClient client(app_port());
  client.Send("GET /index.html HTTP/1.1\r\nHost: ");
  EXPECT_EQ(client.Receive().status, 0);
}

TEST_F(SecurityTest, BoundsConnectionsAndContexts) {
  options().limits.connections = 4;
  options().limits.contexts = 2;
  Start();
  const RawClient::Headers own{{"Sec-Fetch-Site", "same-origin"}};
  EXPECT_EQ(Get("/.orvane/page.js", own).status, 200);
  EXPECT_EQ(Get("/.orvane/page.js", own).status, 200);
  EXPECT_EQ(Get("/.orvane/page.js", own).status, 503);
  EXPECT_THAT(Call("pages.list"), HasSubstr("because 2 pages and frames"));
  std::vector<RawClient> clients;
  for (int i = 0; i < 4; ++i) {
    clients.emplace_back(app_port());
    EXPECT_EQ(clients.back().Request("GET", "/index.html", {{"Host", app_host()}}).status, 200);
  }
  EXPECT_EQ(Get("/index.html").status, 0);
}

TEST_F(SecurityTest, KeepsTheRunsRecordForItsOwner) {
  Start();
  const auto file = folder() / "state/run/simulator.json";
  EXPECT_EQ(std::filesystem::status(file).permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  StopServer();
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(SecretTest, IsLongAndNewEachTime) {
  EXPECT_EQ(MakeSecret().size(), 32U);
  EXPECT_NE(MakeSecret(), MakeSecret());
  EXPECT_TRUE(SecretsMatch("abc", "abc"));
  EXPECT_FALSE(SecretsMatch("abc", "abd"));
  EXPECT_FALSE(SecretsMatch("abc", "abcd"));
  EXPECT_FALSE(SecretsMatch("", "a"));
}

}  // namespace
}  // namespace orvane::server
