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

std::string Framed(std::string_view head, std::string_view body = "") {
  std::string bytes;
  AppendFrame(head, body, &bytes);
  return bytes;
}

// The head's "n" and the body of each frame that has come.
std::vector<std::string> Take(FrameReader& reader) {
  std::vector<std::string> frames;
  while (const auto frame = reader.Next()) {
    frames.push_back(frame->head.value("n", "") + ":" + std::string(frame->body));
  }
  return frames;
}

TEST(FrameTest, WritesBothLengthsWithTheLowestByteFirst) {
  EXPECT_EQ(Framed("{}", "body"), std::string("\x0a\0\0\0\x02\0\0\0{}body", 14));
  EXPECT_EQ(Framed("{}", std::string(0x010200, 'x')).substr(0, 4),
            std::string("\x06\x02\x01\0", 4));
}

TEST(FrameTest, RefusesAFrameAboveTheLimitAndLeavesTheBytes) {
  std::string bytes = "before";
  EXPECT_THROW(AppendFrame("{}", std::string(kMaxFrameBytes - 5, 'x'), &bytes), FrameError);
  EXPECT_EQ(bytes, "before");
}

TEST(FrameTest, TakesAFrameAtTheLimit) {
  FrameReader reader;
  reader.Append(Framed("{}", std::string(kMaxFrameBytes - 6, 'x')));
  const auto frame = reader.Next();
  ASSERT_TRUE(frame);
  EXPECT_EQ(frame->body.size(), kMaxFrameBytes - 6);
}

TEST(FrameReaderTest, TakesFramesThatComeByteByByte) {
  const std::string bytes = Framed(R"({"n":"one"})", "1") + Framed("{}") + Framed("{}", "three");
  FrameReader reader;
  std::vector<std::string> frames;
  for (const char byte : bytes) {
    reader.Append({&byte, 1});
    for (std::string& frame : Take(reader)) frames.push_back(std::move(frame));
  }
  EXPECT_THAT(frames, testing::ElementsAre("one:1", ":", ":three"));
  EXPECT_EQ(reader.buffered(), 0U);
}

TEST(FrameReaderTest, TakesFramesThatComeTogether) {
  FrameReader reader;
  const std::string third = Framed(R"({"n":"three"})", "3");
  reader.Append(Framed(R"({"n":"one"})") + Framed("{}", "two") + third.substr(0, 12));
  EXPECT_THAT(Take(reader), testing::ElementsAre("one:", ":two"));
  reader.Append(third.substr(12));
  EXPECT_THAT(Take(reader), testing::ElementsAre("three:3"));
}

TEST(FrameReaderTest, BringsAnyBytesAsTheBody) {
  const std::string body("\0\xff{\n", 4);
  FrameReader reader;
  reader.Append(Framed("{}", body));
  EXPECT_EQ(reader.Next()->body, body);
}

TEST(FrameReaderTest, TakesAHeadThatHoldsWhateverJsonIsRead) {
  const auto depth = static_cast<size_t>(kMaxJsonDepth);
  const Json read = ParseJson(std::string(depth, '[') + std::string(depth, ']'));
  FrameReader reader;
  reader.Append(Framed(JsonText({{"params", read}})));
  EXPECT_EQ(reader.Next()->head["params"], read);
}

TEST(FrameReaderTest, GoesOnAfterAHeadThatIsNoJsonObject) {
  FrameReader reader;
  for (const char* const head : {"", "{no json", "[1]", R"({"a":1e999})"}) {
    reader.Append(Framed(head, "x") + Framed("{}", "next"));
    EXPECT_THROW(reader.Next(), JsonError) << head;
    EXPECT_EQ(reader.Next()->body, "next") << head;
  }
}

TEST(FrameReaderTest, RefusesALengthAboveTheLimitBeforeTheRestComes) {
  FrameReader reader;
  reader.Append(std::string("\x01\0\0\x01", 4));
  EXPECT_THROW(reader.Next(), FrameError);
}

TEST(FrameReaderTest, RefusesAFrameWithoutRoomForItsHead) {
  for (const std::string& bytes :
       {std::string("\x03\0\0\0abc", 7), std::string("\x05\0\0\0\x02\0\0\0{}", 10)}) {
    FrameReader reader;
    reader.Append(bytes);
    EXPECT_THROW(reader.Next(), FrameError);
  }
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
  std::thread sender([&] { EXPECT_TRUE(SendBytes(ends[0], Framed("{}", sent))); });
  const auto received = ReceiveFrame(ends[1], &reader);
  sender.join();
  ASSERT_TRUE(received);
  EXPECT_EQ(received->body, sent);
}

TEST(FrameSocketTest, ReceivesWhatWasSentBeforeTheOtherSideClosed) {
  SocketPair ends;
  FrameReader reader;
  ASSERT_TRUE(SendBytes(ends[0], Framed("{}", "last")));
  ends.Close(0);
  EXPECT_EQ(ReceiveFrame(ends[1], &reader)->body, "last");
  EXPECT_FALSE(ReceiveFrame(ends[1], &reader));
}

TEST(FrameSocketTest, SaysWithoutASignalThatTheOtherSideIsGone) {
  SocketPair ends;
  ends.Close(1);
  EXPECT_FALSE(SendBytes(ends[0], Framed("{}")));
}

}  // namespace
}  // namespace orvane::base
