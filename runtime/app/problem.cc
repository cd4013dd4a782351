// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "app/problem.h"

#include <utility>

namespace orvane::app {

namespace {

std::string DescribeAll(const std::vector<Problem>& problems) {
  std::string text;
  for (const Problem& problem : problems) {
    if (!text.empty()) text += '\n';
    text += Describe(problem);
  }
  return text;
}

}  // namespace

std::string Describe(const Problem& problem) {
  std::string text = problem.file;
  if (problem.line > 0) text += ":" + std::to_string(problem.line);
  if (!problem.element.empty()) text += ": <" + problem.element + ">";
  return text + ": " + problem.text;
}

AppError::AppError(const std::filesystem::path& file, std::string text)
    : AppError(Problem{file.string(), 0, "", std::move(text)}) {}

AppError::AppError(Problem problem) : AppError(std::vector<Problem>{std::move(problem)}) {}

AppError::AppError(std::vector<Problem> problems)
    : std::runtime_error(DescribeAll(problems)), problems_(std::move(problems)) {}

}  // namespace orvane::app
