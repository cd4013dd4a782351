// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pictures/headless_browser.h"

#include <signal.h>

#include <cerrno>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "changed_environment.h"

namespace orvane::server {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::ThrowsMessage;

constexpr std::chrono::seconds kLimit(60);
constexpr char kPage[] =
    "data:text/html,<body style='margin:0'><div id='screen' "
    "style='width:160px;height:90px;background:red'></div>";
constexpr char kPngInBase64[] = "iVBORw0KGgo";

TEST(HeadlessBrowserTest, TakesAPictureOfItsPage) {
  HeadlessBrowser browser(kPage, {320, 180}, kLimit);
  browser.WaitUntilDrawn();

  EXPECT_THAT(browser.Screenshot(), StartsWith(kPngInBase64));
}

TEST(HeadlessBrowserTest, DrawsAnElementAsWideAsIsAsked) {
  HeadlessBrowser browser(kPage, {320, 180}, kLimit);
  browser.WaitUntilDrawn();

  const std::string narrow = browser.ScreenshotOf("#screen", 160);

  // A PNG's header has its width and height in bytes 16 to 23: 160 and 90.
  EXPECT_EQ(narrow.substr(0, 32), "iVBORw0KGgoAAAANSUhEUgAAAKAAAABa");
}

TEST(HeadlessBrowserTest, SaysThatAnElementIsNotThere) {
  HeadlessBrowser browser(kPage, {320, 180}, kLimit);

  EXPECT_THAT([&] { browser.ScreenshotOf("#none", 100); },
              ThrowsMessage<std::runtime_error>(HasSubstr("#none")));
}

TEST(HeadlessBrowserTest, SaysThatAPageCannotBeOpened) {
  EXPECT_THAT(
      [] {
        HeadlessBrowser("http://127.0.0.1:1/", {320, 180}, kLimit);
      },
      ThrowsMessage<std::runtime_error>(HasSubstr("http://127.0.0.1:1/")));
}

TEST(HeadlessBrowserTest, EndsWithItsOwner) {
  pid_t pid = 0;
  {
    const HeadlessBrowser browser(kPage, {320, 180}, kLimit);
    pid = browser.pid();
    EXPECT_TRUE(browser.running());
  }

  EXPECT_EQ(kill(pid, 0), -1);
  EXPECT_EQ(errno, ESRCH);
}

TEST(HeadlessBrowserTest, SaysWhatToInstallWhenThereIsNone) {
  const test::ChangedEnvironment path("PATH", "/nowhere");
  const test::ChangedEnvironment browser("ORVANE_BROWSER", std::nullopt);

  EXPECT_THAT(
      [] {
        HeadlessBrowser(kPage, {320, 180}, kLimit);
      },
      ThrowsMessage<std::runtime_error>(HasSubstr("ORVANE_BROWSER")));
}

TEST(HeadlessBrowserTest, SaysThatAProgramIsNoBrowser) {
  const test::ChangedEnvironment browser("ORVANE_BROWSER", "/bin/true");

  EXPECT_THROW(HeadlessBrowser(kPage, {320, 180}, kLimit), std::runtime_error);
}

}  // namespace
}  // namespace orvane::server
