// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../support/page_evaluation.h"
#include "extensions/extension_host.h"
#include "page/clock.h"
#include "page/page.h"
#include "page/page_work_queue.h"

namespace orvane::page {

// Time that passes only while a page waits, so that a timer of an hour takes no time. With real
// mail to wait for it falls back on the machine's clock.
class JumpingClock final : public Clock {
 public:
  TimePoint Now() override { return now_; }
  void WaitForWork(PageWorkQueue&, TimePoint until) override { now_ = std::max(now_, until); }
  void Advance(std::chrono::milliseconds time) { now_ += time; }

 private:
  TimePoint now_{std::chrono::hours(1)};
};

class RecordingConsole final : public ConsoleSink {
 public:
  void OnConsole(ConsoleLevel level, const std::string& text) override {
    static const char* const kNames[] = {"debug", "log", "info", "warn", "error"};
    lines.push_back(std::string(kNames[static_cast<int>(level)]) + ": " + text);
  }
  std::vector<std::string> lines;
};

// A host with the test extension, and pages over it.
class PageTest : public testing::Test {
 protected:
  static constexpr std::chrono::seconds kLimit{20};

  // Call before the first page.
  void LoadExtension() {
    std::string error;
    ASSERT_TRUE(host_.LoadFile(TEST_EXTENSION, &error)) << error;
  }

  PageRuntime& runtime() {
    if (!runtime_) runtime_ = std::make_unique<PageRuntime>(host_, *clock_);
    return *runtime_;
  }
  std::unique_ptr<Page> MakePage() { return std::make_unique<Page>(runtime(), options_); }
  Page& page() {
    if (!page_) page_ = MakePage();
    return *page_;
  }

  // The script's last value as JSON; what it threw, after "threw ", if it did.
  static std::string Run(Page& page, const std::string& source) {
    const test::Evaluation evaluation = test::EvaluateToJson(page, source, "test.js");
    return evaluation.error ? "threw " + evaluation.error->message : evaluation.json;
  }
  std::string Run(const std::string& source) { return Run(page(), source); }

  // Runs the script, and the loop until the page is idle.
  std::string RunToEnd(const std::string& source) {
    const std::string json = Run(source);
    EXPECT_TRUE(page().RunUntilIdle(kLimit));
    return json;
  }

  std::vector<std::string> warnings_;
  extensions::ExtensionHost host_{{"org.example.test",
                                   [this](const std::string& text) { warnings_.push_back(text); },
                                   {},
                                   std::chrono::milliseconds(200)}};
  RecordingConsole console_;
  test::ErrorRecorder errors_;
  PageOptions options_{nullptr, &console_, &errors_, nullptr, "org.example.test", "Test", "1.0.0"};
  JumpingClock jumping_clock_;
  Clock* clock_ = &Clock::Monotonic();
  std::unique_ptr<PageRuntime> runtime_;
  std::unique_ptr<Page> page_;
};

}  // namespace orvane::page
