// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/frame.h"

#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvane::base {
namespace {

std::string Framed(std::string_view body) {
  std::string bytes;
  AppendFrame(body, &bytes);
  return bytes;
}

TEST(FrameTest, WritesTheLengthWithItsLowestByteFirst) {
  EXPECT_EQ(Framed("{}"), std::string("\x02\0\0\0{}", 6));
  EXPECT_EQ(Framed(std::string(0x010203, 'x')).substr(0, 4), std::string("\x03\x02\x01\0", 4));
}

TEST(FrameTest, RefusesABodyAboveTheLimitAndLeavesTheBytes) {
  std::string bytes = "before";
  EXPECT_THROW(AppendFrame(std::string(kMaxBodyBytes + 1, 'x'), &bytes), FrameError);
  EXPECT_EQ(bytes, "before");
}

TEST(FrameTest, TakesABodyAtTheLimit) {
  FrameReader reader;
  reader.Append(Framed(std::string(kMaxBodyBytes, 'x')));
  const auto body = reader.Next();
  ASSERT_TRUE(body);
  EXPECT_EQ(body->size(), kMaxBodyBytes);
}

TEST(FrameReaderTest, TakesFramesThatComeByteByByte) {
  const std::string bytes = Framed("one") + Framed("") + Framed("three");
  FrameReader reader;
  std::vector<std::string> bodies;
  for (const char byte : bytes) {
    reader.Append({&byte, 1});
    while (const auto body = reader.Next()) bodies.emplace_back(*body);
  }
  EXPECT_THAT(bodies, testing::ElementsAre("one", "", "three"));
  EXPECT_EQ(reader.buffered(), 0U);
}

TEST(FrameReaderTest, TakesFramesThatComeTogether) {
  FrameReader reader;
  reader.Append(Framed("one") + Framed("two") + Framed("three").substr(0, 6));
  EXPECT_EQ(reader.Next(), "one");
  EXPECT_EQ(reader.Next(), "two");
  EXPECT_EQ(reader.Next(), std::nullopt);
  reader.Append(Framed("three").substr(6));
  EXPECT_EQ(reader.Next(), "three");
}

TEST(FrameReaderTest, RefusesALengthAboveTheLimitBeforeItsBodyComes) {
  FrameReader reader;
  reader.Append(std::string("\x01\0\0\x01", 4));
  EXPECT_THROW(reader.Next(), FrameError);
}

// Both ends of a stream.
class SocketPair {
 public:
  SocketPair() { EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends_), 0); }
  ~SocketPair() {
    Close(0);
    Close(1);
  }
  SocketPair(const SocketPair&) = delete;
  SocketPair& operator=(const SocketPair&) = delete;

  int operator[](size_t end) const { return ends_[end]; }
  void Close(size_t end) {
    if (ends_[end] >= 0) close(ends_[end]);
    ends_[end] = -1;
  }

 private:
  int ends_[2] = {-1, -1};
};

TEST(FrameSocketTest, BringsABodyThatIsLongerThanTheSocketHolds) {
  const SocketPair ends;
  FrameReader reader;
  const std::string sent(size_t{4} << 20, 'x');
  std::thread sender([&] { EXPECT_TRUE(SendBytes(ends[0], Framed(sent))); });
  const auto received = ReceiveFrame(ends[1], &reader);
  sender.join();
  ASSERT_TRUE(received);
  EXPECT_EQ(*received, sent);
}

TEST(FrameSocketTest, ReceivesWhatWasSentBeforeTheOtherSideClosed) {
  SocketPair ends;
  FrameReader reader;
  ASSERT_TRUE(SendBytes(ends[0], Framed("last")));
  ends.Close(0);
  EXPECT_EQ(ReceiveFrame(ends[1], &reader), "last");
  EXPECT_EQ(ReceiveFrame(ends[1], &reader), std::nullopt);
}

TEST(FrameSocketTest, SaysWithoutASignalThatTheOtherSideIsGone) {
  SocketPair ends;
  ends.Close(1);
  EXPECT_FALSE(SendBytes(ends[0], Framed("{}")));
}

}  // namespace
}  // namespace orvane::base
