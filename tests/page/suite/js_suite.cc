// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// js_suite LIBRARY HARNESS SUITE.test.js
// Runs each test of a suite in a page of its own, over a simulated set of its own and the given
// extension. Prints the Test Anything Protocol; exits 0 when every test passed, 1 when one failed,
// 2 when there is nothing to run.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <picojson.h>

#include "../support/page_evaluation.h"
#include "../support/temporary_folder.h"
#include "extensions/extension_host.h"
#include "page/page.h"
#include "suite/recorder.h"
#include "suite/set_controls.h"
#include "television/runtime_services.h"
#include "tvset/set.h"

namespace orvane::page {
namespace {

constexpr std::chrono::seconds kTestLimit{30};

std::string ReadText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  if (!file) throw std::runtime_error("cannot read " + path.string());
  return text.str();
}

struct Suite {
  std::string harness_file, file;
  std::string harness, source;
  std::string library;
};

// The set, the host and the page of one test.
class Stage {
 public:
  explicit Stage(const Suite& suite)
      : controls_(folder_.path()),
        host_({kSuiteApp,
               [](const std::string& text) { std::cout << "# " << text << '\n'; },
               {},
               {}}),
        services_(tvset::Set::Current(), kSuiteApp,
                  [this](const std::string& line) { controls_.Explain(line); }) {
    if (!host_.LoadFile(suite.library)) throw std::runtime_error("cannot load " + suite.library);
    runtime_ = std::make_unique<PageRuntime>(host_);
    PageOptions options;
    options.runtime = &services_;
    options.console = &recorder_;
    options.errors = &errors_;
    options.trace = &recorder_;
    options.widget_id = kSuiteApp;
    page_ = std::make_unique<Page>(*runtime_, options);
    controls_.DefineFor(*page_);
    recorder_.DefineFor(*page_);
    Require(suite.harness, suite.harness_file);
    Require(suite.source, suite.file);
  }

  std::vector<std::string> TestNames() {
    picojson::value names;
    picojson::parse(names, Require("testing.names()", "js_suite"));
    std::vector<std::string> list;
    for (const auto& name : names.get<picojson::array>()) list.push_back(name.get<std::string>());
    return list;
  }

  // What failed, one text each.
  std::vector<std::string> Run(size_t test) {
    Require("testing.start(" + std::to_string(test) + ")", "js_suite");
    const bool ended = page_->RunUntilIdle(kTestLimit);
    std::vector<std::string> failures;
    for (const ScriptError& error : errors_.Take()) failures.push_back(Format(error));
    const std::string result = Require("testing.result()", "js_suite");
    if (!ended || (failures.empty() && result != "\"ended\""))
      failures.push_back("The test did not end.");
    return failures;
  }

 private:
  std::string Require(const std::string& source, const std::string& file) {
    const test::Evaluation evaluation = test::EvaluateToJson(*page_, source, file);
    if (evaluation.error) throw std::runtime_error(Format(*evaluation.error));
    return evaluation.json;
  }

  test::TemporaryFolder folder_;
  SetControls controls_;
  extensions::ExtensionHost host_;
  television::RuntimeServices services_;
  Recorder recorder_;
  test::ErrorRecorder errors_;
  std::unique_ptr<PageRuntime> runtime_;
  std::unique_ptr<Page> page_;
};

std::string Indented(const std::string& text) {
  std::string indented = "# ";
  for (const char c : text) {
    indented += c;
    if (c == '\n') indented += "# ";
  }
  return indented;
}

int RunSuite(const Suite& suite) {
  const std::vector<std::string> names = Stage(suite).TestNames();
  std::cout << "TAP version 13\n1.." << names.size() << '\n';
  if (names.empty()) return 2;
  bool passed = true;
  for (size_t i = 0; i < names.size(); ++i) {
    const std::vector<std::string> failures = Stage(suite).Run(i);
    std::cout << (failures.empty() ? "ok " : "not ok ") << i + 1 << " - " << names[i] << '\n';
    for (const std::string& failure : failures) std::cout << Indented(failure) << '\n';
    passed = passed && failures.empty();
  }
  return passed ? 0 : 1;
}

}  // namespace
}  // namespace orvane::page

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: js_suite LIBRARY HARNESS SUITE.test.js\n";
    return 2;
  }
  try {
    orvane::page::Suite suite;
    suite.library = argv[1];
    suite.harness_file = argv[2];
    suite.file = argv[3];
    suite.harness = orvane::page::ReadText(suite.harness_file);
    suite.source = orvane::page::ReadText(suite.file);
    return orvane::page::RunSuite(suite);
  } catch (const std::exception& error) {
    std::cout << "Bail out! " << error.what() << std::endl;
    return 2;
  }
}
