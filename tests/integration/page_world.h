// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "extensions/extension_host.h"
#include "page/page.h"
#include "page/page_runtime.h"
#include "set/set_fixture.h"
#include "support/page_evaluation.h"
#include "television/runtime_services.h"

namespace orvane::test {

std::string ReadFile(const std::filesystem::path& file);

// Counts what pages complain about, and shows it in the test's output.
class ConsoleRecorder final : public page::ConsoleSink {
 public:
  void OnConsole(page::ConsoleLevel level, const std::string& text) override;
  int warnings() const { return warnings_; }

 private:
  int warnings_ = 0;
};

// A simulated UHD set on which one application runs, and the real library in a host: tests open
// pages on it.
class PageWorldTest : public tvset::testing::SetTest {
 protected:
  PageWorldTest();

  std::unique_ptr<page::Page> MakePage();
  ConsoleRecorder& console() { return console_; }

 private:
  ConsoleRecorder console_;
  extensions::ExtensionHost host_;
  television::RuntimeServices services_;
  page::PageRuntime runtime_;
};

}  // namespace orvane::test
