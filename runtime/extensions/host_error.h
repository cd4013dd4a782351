// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

namespace orvane::extensions {

// What went wrong, with which value, and what to do about it: `what()` is for people. Thrown to
// those who call the host from C++ only: an extension that calls the C interface is warned about
// instead, through HostOptions::warn.
class HostError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orvane::extensions
