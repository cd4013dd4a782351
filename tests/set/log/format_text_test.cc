// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "log/format_text.h"

#include <climits>
#include <cstdint>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

namespace tvset::testing {
namespace {

// Formats with both, and checks that result and text, terminating zero included, are the same.
__attribute__((format(printf, 2, 3))) void ExpectSame(size_t size, const char* format, ...) {
  std::string ours(size + 1, '#');
  std::string theirs(size + 1, '#');
  va_list arguments;
  va_list copy;
  va_start(arguments, format);
  va_copy(copy, arguments);
  const int our_length = FormatText(ours.data(), size, format, arguments);
  const int their_length = std::vsnprintf(theirs.data(), size, format, copy);
  va_end(copy);
  va_end(arguments);
  EXPECT_EQ(our_length, their_length) << format;
  EXPECT_STREQ(ours.c_str(), theirs.c_str()) << format;
  EXPECT_EQ(ours[size], '#') << format;
}

TEST(FormatTextTest, PlainConversionsReadAsTheLibrarys) {
  int place = 0;
  ExpectSame(100, "nothing to convert");
  ExpectSame(100, "%s: %s(%d) > %s", "file", "function", 12, "text");
  ExpectSame(100, "%d %d %d %i", INT_MIN, INT_MAX, 0, -1);
  ExpectSame(100, "%u %u %x %x", UINT_MAX, 0U, UINT_MAX, 0U);
  ExpectSame(100, "%ld %lu %lx", LONG_MIN, ULONG_MAX, ULONG_MAX);
  ExpectSame(100, "%lld %llu %llx", LLONG_MIN, ULLONG_MAX, ULLONG_MAX);
  ExpectSame(100, "%zu %zd %zx", SIZE_MAX, static_cast<ssize_t>(-5), SIZE_MAX);
  ExpectSame(100, "%p %p", static_cast<void*>(&place), static_cast<void*>(nullptr));
  ExpectSame(100, "%c%c%%", 'a', 'b');
  ExpectSame(100, "%s", "");
}

TEST(FormatTextTest, MissingTextIsNamed) {
  const char* volatile none = nullptr;
  ExpectSame(100, "[%s]", none);
}

TEST(FormatTextTest, OtherConversionsAreLeftToTheLibrary) {
  ExpectSame(100, "%s %5.3f %s", "before", 1.25, "after");
  ExpectSame(100, "%5d|%-5d|%05d|%+d", 1, 2, 3, 4);
  ExpectSame(100, "%.3s|%8s|%*d", "abcdef", "abc", 6, 7);
  ExpectSame(100, "%s %hd %hhd %X %o", "text", static_cast<short>(7), static_cast<signed char>(8),
             255U, 8U);
  ExpectSame(100, "%d %jd", 1, static_cast<intmax_t>(2));
}

TEST(FormatTextTest, TextIsCutToTheBufferAndCountedWhole) {
  for (const size_t size : {1U, 2U, 5U, 10U, 11U, 12U}) {
    ExpectSame(size, "%s-%d-%s", "abc", 1234, "de");
    ExpectSame(size, "%5d-%s", 1, "abcdef");
  }
}

}  // namespace
}  // namespace tvset::testing
