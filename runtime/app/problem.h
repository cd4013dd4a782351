// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvane::app {

// One thing that is wrong, or only odd, in an application's files, told to the person who wrote
// them.
struct Problem {
  std::string file;
  int line = 0;  // 1-based; 0 when the problem is the whole file's
  // As the author wrote it, "tizen:application"; empty when no element is to blame.
  std::string element;
  std::string text;  // what is wrong, and what to do about it
};

// "config.xml:12: <tizen:metadata>: the attribute key is missing. …", the form that editors make
// clickable.
std::string Describe(const Problem& problem);

// The application cannot be used. Carries every problem that was found, not only the first; what()
// has one line for each.
class AppError : public std::runtime_error {
 public:
  // A problem of the whole file.
  AppError(const std::filesystem::path& file, std::string text);
  explicit AppError(Problem problem);
  explicit AppError(std::vector<Problem> problems);

  const std::vector<Problem>& problems() const { return problems_; }

 private:
  std::vector<Problem> problems_;
};

}  // namespace orvane::app
