// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "page/page.h"
#include "tvset/applications.h"

namespace orvane::page {

inline constexpr char kSuiteApp[] = "orvsuite00.Suite";

// A simulated set for one test of a suite, with the suite's application running in front, and the
// functions by which the test sets it up and asks what happened: testing.fail("function", code) and
// its like. The page thread only.
class SetControls {
 public:
  // Starts the set. The folder must be empty.
  explicit SetControls(const std::filesystem::path& state_folder);
  ~SetControls();

  // Gives the page testing.*; this must outlive the page.
  void DefineFor(Page& page);

  // What the runtime's services explained.
  void Explain(const std::string& line) { explanations_.push_back(line); }

 private:
  void DefineFaultsAndFeatures(Page& page);
  void DefineApplications(Page& page);
  void DefineQuestions(Page& page);
  void DefineInputQuestions(Page& page);

  tvset::Application application_;
  std::vector<std::string> explanations_;
};

}  // namespace orvane::page
