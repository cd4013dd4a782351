// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "page_world.h"

#include <unistd.h>

#include <fstream>
#include <iostream>
#include <iterator>

namespace orvane::test {

namespace {

constexpr const char* kAppId = "OrvaneTest.Pages";

extensions::HostOptions HostOptions() {
  extensions::HostOptions options;
  options.app_id = kAppId;
  return options;
}

}  // namespace

std::string ReadFile(const std::filesystem::path& file) {
  std::ifstream stream(file);
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

void ConsoleRecorder::OnConsole(page::ConsoleLevel level, const std::string& text) {
  if (level == page::ConsoleLevel::kWarn || level == page::ConsoleLevel::kError) {
    ++warnings_;
    std::cerr << text << '\n';
  }
}

PageWorldTest::PageWorldTest()
    : host_(HostOptions()), services_(set(), kAppId, nullptr), runtime_(host_) {
  Install(kAppId);
  set().applications().Launch(kAppId, getpid());
  std::string error;
  EXPECT_TRUE(host_.LoadFile(ORVANE_LIBRARY, &error)) << error;
}

std::unique_ptr<page::Page> PageWorldTest::MakePage() {
  page::PageOptions options;
  options.runtime = &services_;
  options.console = &console_;
  return std::make_unique<page::Page>(runtime_, options);
}

}  // namespace orvane::test
