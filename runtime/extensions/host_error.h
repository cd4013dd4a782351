// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

namespace orvane::extensions {

// What went wrong, with which value, and what to do about it: `what()` is for people.
class HostError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orvane::extensions
