// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pictures/picture_taker.h"

#include <chrono>
#include <string>

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "changed_environment.h"

namespace orvane::server {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr std::chrono::seconds kLimit(120);
constexpr char kSimulator[] =
    "data:text/html,<body style='margin:0'><div class='screen' "
    "style='width:160px;height:90px;background:red'></div>";
constexpr char kPngInBase64[] = "iVBORw0KGgo";

class PictureTakerTest : public testing::Test {
 protected:
  // Waits on the loop until a picture was taken.
  PictureTaker::Picture Picture(PictureTaker& taker) {
    PictureTaker::Picture taken;
    bool is_done = false;
    taker.TakePicture("data:text/html,<p>page</p>", [&](const PictureTaker::Picture& picture) {
      taken = picture;
      is_done = true;
    });
    const auto end = std::chrono::steady_clock::now() + kLimit;
    while (!is_done && std::chrono::steady_clock::now() < end) loop_.run_for(kStep);
    return taken;
  }
  boost::asio::io_context& loop() { return loop_; }

 private:
  static constexpr std::chrono::milliseconds kStep{20};

  boost::asio::io_context loop_;
  // As a server's loop, it does not end when there is nothing to do.
  const boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work_{
      loop_.get_executor()};
};

TEST_F(PictureTakerTest, TakesAPictureOfTheApplicationsPageInABrowserOfItsOwn) {
  PictureTaker taker(loop());
  const PictureTaker::Picture picture = Picture(taker);
  EXPECT_THAT(picture.png, StartsWith(kPngInBase64));
  EXPECT_TRUE(picture.is_fresh);
  EXPECT_EQ(picture.error, "");
}

TEST_F(PictureTakerTest, TakesAPictureOfTheScreenWhereTheSimulatorIsOpen) {
  PictureTaker taker(loop());
  std::string failure;
  taker.Open(kSimulator, [&](const std::string& why) { failure = why; });
  const PictureTaker::Picture picture = Picture(taker);
  // A PNG's header has its width and height in bytes 16 to 23: 1920 and 1080.
  EXPECT_EQ(picture.png.substr(0, 32), "iVBORw0KGgoAAAANSUhEUgAAB4AAAAQ4");
  EXPECT_FALSE(picture.is_fresh);
  EXPECT_EQ(failure, "");
}

TEST_F(PictureTakerTest, SaysWhyThereIsNoPicture) {
  const test::ChangedEnvironment path("PATH", "/nowhere");
  PictureTaker taker(loop());
  const PictureTaker::Picture picture = Picture(taker);
  EXPECT_EQ(picture.png, "");
  EXPECT_THAT(picture.error, HasSubstr("hromium"));
}

TEST_F(PictureTakerTest, SaysWhyTheSimulatorCannotBeOpened) {
  const test::ChangedEnvironment path("PATH", "/nowhere");
  PictureTaker taker(loop());
  std::string failure;
  taker.Open(kSimulator, [&](const std::string& why) { failure = why; });
  Picture(taker);  // comes after it
  EXPECT_THAT(failure, HasSubstr("hromium"));
}

TEST_F(PictureTakerTest, EndsWithWhatNobodyHasTakenYet) {
  PictureTaker taker(loop());
  for (int i = 0; i < 50; ++i) taker.TakePicture("about:blank", [](const auto&) { FAIL(); });
}

}  // namespace
}  // namespace orvane::server
