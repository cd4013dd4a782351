// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/page_script.h"

#include <gmock/gmock.h>

namespace orvane::server {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr char kStarted[] =
    R"({"catalogue":[{"name":"a"}],"scripts":{"a":"exports.x = '\n';","b":"broken"}})";

PageScript MakeScript() {
  return {base::ParseJson(kStarted),
          {{"name", "</script>"}},
          std::chrono::milliseconds(5),
          [](const std::string&, const std::string& name) {
            return name == "b" ? std::string("line 1: no") : std::string();
          }};
}

TEST(PageScriptTest, CarriesWhatThePageHasToKnow) {
  const std::string script = MakeScript().Make(7, "secret");
  EXPECT_THAT(
      script,
      HasSubstr(R"("catalogue":[{"name":"a"}],"context":7,"deadlineMs":5,"token":"secret"})"));
  EXPECT_THAT(script, HasSubstr(R"(({"app":{"name":"\u003c/script>"})"));
  EXPECT_THAT(script, HasSubstr("exports.x = '\n';"));
}

TEST(PageScriptTest, LeavesOutScriptsThatWouldBreakIt) {
  const std::string script = MakeScript().Make(7, "secret");
  EXPECT_THAT(script, HasSubstr(R"("broken":{"b":"line 1: no"})"));
  EXPECT_THAT(script, Not(HasSubstr("\"b\":function")));
}

TEST(PageScriptTest, KeepsDataFromEndingAScript) {
  EXPECT_EQ(ForScript("\"</script>\xe2\x80\xa8\xe2\x80\xa9\xe2\x80\x94\""),
            "\"\\u003c/script>\\u2028\\u2029\xe2\x80\x94\"");
}

}  // namespace
}  // namespace orvane::server
