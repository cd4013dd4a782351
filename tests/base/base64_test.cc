// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/base64.h"

#include <string>

#include <gtest/gtest.h>

namespace orvane::base {
namespace {

TEST(Base64Test, WritesBytesOfEachLength) {
  EXPECT_EQ(EncodeBase64(""), "");
  EXPECT_EQ(EncodeBase64("f"), "Zg==");
  EXPECT_EQ(EncodeBase64("fo"), "Zm8=");
  EXPECT_EQ(EncodeBase64("foo"), "Zm9v");
  EXPECT_EQ(EncodeBase64("foob"), "Zm9vYg==");
}

TEST(Base64Test, ReadsWhatItWrites) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) {
    bytes.push_back(static_cast<char>(byte));
    EXPECT_EQ(DecodeBase64(EncodeBase64(bytes)), bytes);
  }
}

TEST(Base64Test, RefusesWhatIsNone) {
  for (const char* text : {"Zg", "Zg=", "Z===", "Zm9v!A==", "Zm 9"}) {
    EXPECT_FALSE(DecodeBase64(text)) << text;
  }
}

}  // namespace
}  // namespace orvane::base
