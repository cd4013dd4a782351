// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dlog.h"
#include "temporary_folder.h"
#include "tvset/set.h"

namespace orvane::test {

inline constexpr char kPackage[] = "aBcDe01234";
inline constexpr char kApp[] = "aBcDe01234.Player";

// A simulated set in a folder of its own, with one application, which this process runs as: in the
// foreground and focused. Nothing is in its log when the test begins.
class SetFixture : public ::testing::Test {
 protected:
  using Metadata = std::vector<std::pair<std::string, std::string>>;

  SetFixture();
  ~SetFixture() override;

  static tvset::Set& set() { return tvset::Set::Current(); }

  // Replaces the application's package data; it goes on running.
  void Declare(const Metadata& metadata, const std::vector<std::string>& privileges = {});

  void Fail(const std::string& function, int code = -1,
            tvset::FaultMode mode = tvset::FaultMode::kAlways) {
    set().faults().Fail(function, code, mode);
  }

  // A file in the test's own folder.
  std::filesystem::path WriteFile(const std::string& name, const std::string& text);
  const std::filesystem::path& folder() const { return folder_.path(); }

  // A line of exactly this text is in the log.
  static void ExpectLog(log_priority priority, const std::string& tag, const std::string& text);

  // The lines of the library's own modules, "E AppUtil.cc GetAppID: getpid failed": priority, file,
  // function and message.
  static std::vector<std::string> Messages();
  static void ClearLog() { set().log().Clear(); }

 private:
  const TemporaryFolder folder_;
};

// Whole text of a file; empty when there is none.
std::string ReadFile(const std::filesystem::path& path);

}  // namespace orvane::test
