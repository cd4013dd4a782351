// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/http_message.h"

#include <gtest/gtest.h>

namespace orvane::server {
namespace {

TEST(HttpMessageTest, DecodesPaths) {
  EXPECT_EQ(DecodePath("/a%20b/c.js?x=../y"), "/a b/c.js");
  EXPECT_EQ(DecodePath("/a..b/...c"), "/a..b/...c");
  for (const char* target : {"", "a", "/..", "/a/..", "/%2e%2e/a", "/a\\b", "/a%5cb", "/%00",
                             "/%0a", "/%", "/%4", "/%g0", "/%-1"}) {
    EXPECT_FALSE(DecodePath(target)) << target;
  }
}

TEST(HttpMessageTest, EncodesWhatAPathCannotHold) {
  EXPECT_EQ(EncodePath("/a b/ä?#%.html"), "/a%20b/%C3%A4%3F%23%25.html");
}

TEST(HttpMessageTest, FindsHeadersWithoutCaseAndQueriesWithIt) {
  HttpRequest request;
  request.set("X-Name", "value");
  request.target("/path?a=1&b=%20&ab=2&a=3");
  EXPECT_EQ(request.Header("x-nAME"), "value");
  EXPECT_EQ(request.Header("X-Other"), "");
  EXPECT_EQ(request.Query("a"), "1");
  EXPECT_EQ(request.Query("b"), " ");
  EXPECT_EQ(request.Query("B"), "");
}

}  // namespace
}  // namespace orvane::server
