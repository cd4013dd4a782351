// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/records/record_ring.h"

#include <gtest/gtest.h>

namespace orvane::server {
namespace {

std::string ListOf(const RecordRing& ring, int64_t since, int64_t limit, int64_t expected_next) {
  int64_t next = 0;
  const std::string list = ring.List(since, limit, &next);
  EXPECT_EQ(next, expected_next);
  return list;
}

TEST(RecordRingTest, NumbersRecordsAndForgetsTheOldest) {
  RecordRing ring(2, 1000);
  for (int i = 1; i <= 3; ++i) ring.Add({{"a", i}});
  EXPECT_EQ(ListOf(ring, 0, 10, 3), R"([{"a":2,"seq":2},{"a":3,"seq":3}])");
}

TEST(RecordRingTest, KeepsRecordsThatAreNumbered) {
  RecordRing ring(2, 1000);
  for (const char* record : {R"({"seq":1})", R"({"seq":2})", R"({"seq":3})"}) {
    ring.AddNumbered(record);
  }
  EXPECT_EQ(ListOf(ring, 0, 10, 3), R"([{"seq":2},{"seq":3}])");
}

TEST(RecordRingTest, ListsFromANumberOn) {
  RecordRing ring(10, 1000);
  for (int i = 0; i < 4; ++i) ring.Add({{"a", 0}});
  EXPECT_EQ(ListOf(ring, 1, 2, 3), R"([{"a":0,"seq":2},{"a":0,"seq":3}])");
  EXPECT_EQ(ListOf(ring, 4, 10, 4), "[]");
  EXPECT_EQ(ListOf(ring, 99, 10, 99), "[]");
  EXPECT_EQ(ListOf(ring, -5, 1, 1), R"([{"a":0,"seq":1}])");
  EXPECT_EQ(ListOf(ring, 0, -1, 0), "[]");
}

TEST(RecordRingTest, BoundsItsBytesAndKeepsTheLastRecord) {
  RecordRing ring(10, 100);
  ring.Add({{"a", 0}});
  ring.Add({{"a", std::string(200, 'x')}});
  EXPECT_EQ(ListOf(ring, 0, 10, 2).find(R"("seq":1)"), std::string::npos);
}

TEST(RecordRingTest, GoesOnCountingAfterItWasCleared) {
  RecordRing ring(10, 1000);
  ring.Add({{"a", 0}});
  ring.Clear();
  EXPECT_EQ(ListOf(ring, 0, 10, 1), "[]");
  ring.Add({{"a", 0}});
  EXPECT_EQ(ListOf(ring, 0, 10, 2), R"([{"a":0,"seq":2}])");
}

}  // namespace
}  // namespace orvane::server
