// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdlib.h>

#include <optional>
#include <string>
#include <utility>

namespace orvane::test {

// A variable of the environment that has another value until the end of the scope. While no other
// thread reads the environment.
class ChangedEnvironment {
 public:
  // Without a value the variable is taken away.
  ChangedEnvironment(std::string name, const std::optional<std::string>& value)
      : name_(std::move(name)) {
    if (const char* const before = getenv(name_.c_str())) before_ = before;
    Set(value);
  }
  ~ChangedEnvironment() { Set(before_); }
  ChangedEnvironment(const ChangedEnvironment&) = delete;
  ChangedEnvironment& operator=(const ChangedEnvironment&) = delete;

 private:
  void Set(const std::optional<std::string>& value) {
    value ? setenv(name_.c_str(), value->c_str(), 1) : unsetenv(name_.c_str());
  }

  const std::string name_;
  std::optional<std::string> before_;
};

}  // namespace orvane::test
