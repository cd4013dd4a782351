// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <string>

#include <gmock/gmock.h>

#include "server/web/media_types.h"
#include "test_server.h"

namespace orvane::server {
namespace {

using testing::HasSubstr;
using testing::Not;

class AppFolderTest : public ServerTest {
 protected:
  static std::string HeaderOf(const RawResponse& response, const std::string& name) {
    const size_t begin = response.head.find(name + ": ");
    if (begin == std::string::npos) return "";
    const size_t value = begin + name.size() + 2;
    return response.head.substr(value, response.head.find("\r\n", value) - value);
  }
};

TEST_F(AppFolderTest, LeadsToTheStartPage) {
  Start();
  const RawResponse response = Get("/");
  EXPECT_EQ(response.status, 302);
  EXPECT_EQ(HeaderOf(response, "Location"), "/index.html");
}

TEST_F(AppFolderTest, PutsTheScriptIntoDocumentsOnly) {
  WriteFile("part.html", "<p>part</p>");
  Start();
  EXPECT_THAT(Get("/part.html", {{"Sec-Fetch-Dest", "document"}}).body,
              HasSubstr("/.orvane/page.js"));
  EXPECT_EQ(Get("/part.html", {{"Sec-Fetch-Dest", "empty"}}).body, "<p>part</p>");
}

TEST_F(AppFolderTest, IsolatesItsPages) {
  Start();
  const RawResponse response = Get("/index.html");
  EXPECT_EQ(HeaderOf(response, "Cross-Origin-Opener-Policy"), "same-origin");
  EXPECT_EQ(HeaderOf(response, "Cross-Origin-Embedder-Policy"), "credentialless");
  EXPECT_EQ(HeaderOf(response, "Cross-Origin-Resource-Policy"), "cross-origin");
  EXPECT_EQ(HeaderOf(response, "Origin-Agent-Cluster"), "?1");
}

TEST_F(AppFolderTest, ServesPartsOfAFile) {
  WriteFile("movie.mp4", "0123456789");
  Start();
  const auto part = [this](const std::string& range) {
    return Get("/movie.mp4", {{"Range", range}});
  };
  EXPECT_EQ(part("bytes=2-4").body, "234");
  EXPECT_EQ(HeaderOf(part("bytes=2-4"), "Content-Range"), "bytes 2-4/10");
  EXPECT_EQ(part("bytes=7-").body, "789");
  EXPECT_EQ(part("bytes=-3").body, "789");
  EXPECT_EQ(part("bytes=8-99").body, "89");
  EXPECT_EQ(part("bytes=10-").status, 416);
  EXPECT_EQ(part("bytes=5-2").status, 200);
  EXPECT_EQ(part("bytes=0-1,3-4").status, 200);
  EXPECT_EQ(part("bytes=99999999999999999999-").status, 200);
}

TEST_F(AppFolderTest, ServesALargeFileWhole) {
  const std::string bytes(size_t{3} << 20U, 'x');
  WriteFile("large.bin", bytes);
  Start();
  EXPECT_EQ(Get("/large.bin").body, bytes);
}

TEST_F(AppFolderTest, TellsThatAFileHasNotChanged) {
  WriteFile("style.css", "a{}");
  Start();
  const std::string tag = HeaderOf(Get("/style.css"), "ETag");
  EXPECT_EQ(Get("/style.css", {{"If-None-Match", tag}}).status, 304);
  WriteFile("style.css", "a{color:red}");
  EXPECT_EQ(Get("/style.css", {{"If-None-Match", tag}}).body, "a{color:red}");
}

TEST_F(AppFolderTest, ServesNamesBeyondAscii) {
  WriteFile("bild ä.png", "png");
  Start();
  EXPECT_EQ(Get("/bild%20%C3%A4.png").body, "png");
}

TEST_F(AppFolderTest, SaysWhichFileIsMissing) {
  Start();
  const RawResponse response = Get("/missing.js");
  EXPECT_EQ(response.status, 404);
  EXPECT_THAT(response.body, HasSubstr("\"missing.js\""));
  EXPECT_EQ(Get("/.orvane/other").status, 404);
}

TEST(MediaTypeTest, KnowsTypesByTheEndOfTheName) {
  EXPECT_EQ(MediaTypeOf("/a/b.HTML"), "text/html");
  EXPECT_EQ(MediaTypeOf("/a.b/c"), "application/octet-stream");
  EXPECT_EQ(MediaTypeOf("/x.mjs"), "text/javascript");
  EXPECT_TRUE(IsDocumentType("text/html; charset=utf-8"));
  EXPECT_FALSE(IsDocumentType("text/javascript"));
}

}  // namespace
}  // namespace orvane::server
