// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "raw_server.h"
#include "server/application/dev_server_address.h"
#include "test_server.h"

namespace orvane::server {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr char kElement[] = R"(<script src="/.orvane/page.js"></script>)";

// An answer with a body.
std::string Answer(const std::string& headers, const std::string& body) {
  return "HTTP/1.1 200 OK\r\n" + headers + "Content-Length: " + std::to_string(body.size()) +
         "\r\n\r\n" + body;
}

class DevServerTest : public ServerTest {
 protected:
  ~DevServerTest() override { StopServer(); }

  // A server that answers everything so, and the application from it.
  void StartWith(const std::string& answer) {
    dev_ = std::make_unique<RawServer>([answer](const std::string&) { return answer; });
    options().dev_server = dev_->url() + "/app/";
    Start();
  }
  void StartWithPage(const std::string& headers, const std::string& html = "<title>x</title>") {
    StartWith(Answer("Content-Type: text/html\r\n" + headers, html));
  }
  std::string LastRequest() const {
    const auto requests = dev_->requests();
    return requests.empty() ? "" : requests.back();
  }
  const RawServer& dev() const { return *dev_; }

 private:
  std::unique_ptr<RawServer> dev_;
};

const RawClient::Headers kOfPage{{"Sec-Fetch-Dest", "document"}, {"Sec-Fetch-Mode", "navigate"}};
const RawClient::Headers kOfScript{{"Sec-Fetch-Dest", "script"}};

TEST_F(DevServerTest, PutsTheScriptIntoDocuments) {
  StartWithPage("ETag: \"1\"\r\nCache-Control: max-age=60\r\n");
  const RawResponse response = Get("/page", kOfPage);
  EXPECT_EQ(response.body, kElement + std::string("<title>x</title>"));
  EXPECT_TRUE(response.Has("Cache-Control: no-store\r\n"));
  EXPECT_THAT(response.head, AllOf(Not(HasSubstr("ETag")), Not(HasSubstr("max-age"))));
}

TEST_F(DevServerTest, PutsTheScriptIntoDocumentsThatComeInPieces) {
  StartWith(
      "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nTransfer-Encoding: chunked\r\n\r\n"
      "5\r\n<p>on\r\n5\r\ne</p>\r\n0\r\n\r\n");
  EXPECT_EQ(Get("/page", kOfPage).body, kElement + std::string("<p>one</p>"));
}

TEST_F(DevServerTest, WaitsForTheAnswerBehindEarlyHints) {
  StartWith("HTTP/1.1 103 Early Hints\r\nLink: </a.css>; rel=preload\r\n\r\n" +
            Answer("Content-Type: text/html\r\n", "<p>"));
  EXPECT_EQ(Get("/page", kOfPage).body, kElement + std::string("<p>"));
}

TEST_F(DevServerTest, PassesOtherFilesAsTheyAre) {
  StartWith(Answer("Content-Type: text/javascript\r\nETag: \"1\"\r\n", "<html>"));
  const RawResponse response = Get("/main.js", kOfScript);
  EXPECT_EQ(response.body, "<html>");
  EXPECT_TRUE(response.Has("ETag: \"1\"\r\n"));
}

TEST_F(DevServerTest, MakesItsPagesIsolatedWhateverTheServerSays) {
  StartWithPage("Cross-Origin-Opener-Policy: unsafe-none\r\n");
  const RawResponse response = Get("/page", kOfPage);
  EXPECT_TRUE(response.Has("Cross-Origin-Opener-Policy: same-origin\r\n"));
  EXPECT_THAT(response.head, Not(HasSubstr("unsafe-none")));
}

TEST_F(DevServerTest, AsksForWholeUncompressedDocuments) {
  StartWithPage("");
  RawClient::Headers headers = kOfPage;
  headers.insert(headers.end(),
                 {{"Accept-Encoding", "gzip"}, {"If-None-Match", "\"1\""}, {"Range", "bytes=0-1"}});
  Get("/a?b=c", headers);
  EXPECT_THAT(
      LastRequest(),
      AllOf(StartsWith("GET /a?b=c HTTP/1.1\r\n"), HasSubstr("Accept-Encoding: identity\r\n"),
            Not(HasSubstr("gzip")), Not(HasSubstr("If-None-Match")), Not(HasSubstr("Range"))));
}

TEST_F(DevServerTest, SpeaksToTheServerAsAPageOfItsOwn) {
  StartWith(Answer("Content-Type: text/plain\r\n", "done"));
  const RawResponse response =
      RawClient(app_port())
          .Request(
              "POST", "/api",
              {{"Host", app_host()}, {"Origin", app_origin()}, {"Referer", app_origin() + "/page"}},
              "data");
  EXPECT_EQ(response.body, "done");
  EXPECT_THAT(LastRequest(), AllOf(HasSubstr("Host: 127.0.0.1:" + std::to_string(dev().port())),
                                   HasSubstr("Origin: " + dev().url() + "\r\n"),
                                   HasSubstr("Referer: " + dev().url() + "/page\r\n"),
                                   Not(HasSubstr(app_host())), testing::EndsWith("\r\n\r\ndata")));
}

TEST_F(DevServerTest, KeepsRedirectsInTheApplication) {
  StartWith("HTTP/1.1 302 Found\r\nLocation: /next\r\nContent-Length: 0\r\n\r\n");
  EXPECT_TRUE(Get("/page", kOfPage).Has("Location: /next\r\n"));
}

TEST_F(DevServerTest, LeadsTheStartOfTheApplicationToThePathOfTheAddress) {
  StartWithPage("");
  EXPECT_TRUE(Get("/").Has("Location: /app/\r\n"));
}

TEST_F(DevServerTest, SaysThatTheServerDoesNotAnswer) {
  options().dev_server = RawServer([](const std::string&) { return ""; }).url();
  Start();
  const RawResponse response = Get("/x", kOfPage);
  EXPECT_EQ(response.status, 502);
  EXPECT_THAT(response.body, HasSubstr("Start it, and load the page again"));
}

TEST_F(DevServerTest, RelaysASocketBothWays) {
  StartWith("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\n\r\n");
  RawClient socket(app_port());
  EXPECT_EQ(socket.Upgrade("/hot", {{"Host", app_host()}, {"Origin", app_origin()}}), 101);
  EXPECT_THAT(LastRequest(), AllOf(HasSubstr("Upgrade: websocket\r\n"),
                                   HasSubstr("Origin: " + dev().url() + "\r\n")));
  EXPECT_TRUE(socket.Echoes("there and back"));
  EXPECT_TRUE(socket.Echoes(std::string(1000000, 'x')));
}

TEST_F(DevServerTest, RelaysWhatCameRightBehindTheRequest) {
  StartWith("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\n\r\n");
  RawClient socket(app_port());
  socket.Send("GET /hot HTTP/1.1\r\nHost: " + app_host() + "\r\nOrigin: " + app_origin() +
              "\r\nConnection: Upgrade\r\nUpgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
              "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\nat once");
  EXPECT_EQ(socket.Receive().status, 101);
  EXPECT_TRUE(socket.ReceivesBytes("at once"));
}

TEST_F(DevServerTest, GivesForeignPagesNoSocket) {
  StartWith("HTTP/1.1 101 Switching Protocols\r\n\r\n");
  EXPECT_EQ(RawClient(app_port())
                .Upgrade("/hot", {{"Host", app_host()}, {"Origin", "http://evil.example"}}),
            403);
  EXPECT_THAT(dev().requests(), IsEmpty());
}

TEST_F(DevServerTest, ListsADocumentWhosePolicyForbidsTheScript) {
  StartWithPage("Content-Security-Policy: script-src 'nonce-x'\r\n");
  Get("/page", kOfPage);
  EXPECT_THAT(Call("pages.list"), AllOf(HasSubstr("\"href\":\"" + app_origin() + "/page\""),
                                        HasSubstr(R"("problem":"The page's Content-Security)"),
                                        HasSubstr(R"("runtime":"noScript")")));
}

TEST_F(DevServerTest, ListsADocumentThatTheTelevisionMayNotShow) {
  StartWithPage("Content-Security-Policy: frame-ancestors 'none'\r\n");
  Get("/page", kOfPage);
  EXPECT_EQ(Call("pages.list"), R"({"result":[]})");
  Get("/page", {{"Sec-Fetch-Dest", "iframe"},
                {"Sec-Fetch-Mode", "navigate"},
                {"Sec-Fetch-Site", "cross-site"}});
  EXPECT_THAT(Call("pages.list"), HasSubstr("forbids the television to show it"));
}

TEST_F(DevServerTest, ListsADocumentThatIsCompressedAllTheSame) {
  StartWithPage("Content-Encoding: br\r\n", "compressed");
  EXPECT_EQ(Get("/page", kOfPage).body, "compressed");
  EXPECT_THAT(Call("pages.list"), HasSubstr("switch compression off"));
}

TEST_F(DevServerTest, ForgetsADocumentWhenAnotherTakesItsPlace) {
  StartWithPage("Content-Security-Policy: script-src 'none'\r\n");
  Get("/first", kOfPage);
  Get("/second", kOfPage);
  EXPECT_THAT(Call("pages.list"), AllOf(HasSubstr("/second"), Not(HasSubstr("/first"))));
  TestPage page = ConnectPage();
  page.client.SendText(R"({"type":"state","href":"http://x/third","top":true})");
  EXPECT_THAT(CallUntil("pages.list", "/third"), Not(HasSubstr("noScript")));
}

TEST_F(DevServerTest, SaysWhatAddressItTakes) {
  for (const char* url : {"localhost:5173", "http://", "http://host:0", "http://host:99999",
                          "http://host:x", "ftp://host"}) {
    EXPECT_THROW(ParseDevServerAddress(url), std::runtime_error) << url;
  }
  EXPECT_THAT([] { ParseDevServerAddress("https://localhost:5173"); },
              testing::ThrowsMessage<std::runtime_error>(HasSubstr("Switch https off")));
  EXPECT_EQ(ParseDevServerAddress("http://[::1]:5173/x").host, "::1");
  EXPECT_EQ(ParseDevServerAddress("HTTP://host?x").port, 80);
}

TEST_F(DevServerTest, ServesAnAddressThatIsTheContentOfTheApplication) {
  EXPECT_EQ(DevServerOfContent("index.html"), "");
  EXPECT_EQ(DevServerOfContent("http://localhost:5173/app"), "http://localhost:5173/app");
  for (const char* content : {"https://localhost/", "http://example.org/", "https://example.org"}) {
    EXPECT_THAT(
        [content] { DevServerOfContent(content); },
        testing::ThrowsMessage<std::runtime_error>(HasSubstr("--url http://localhost:PORT")))
        << content;
  }
}

}  // namespace
}  // namespace orvane::server
