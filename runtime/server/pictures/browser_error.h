// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

namespace orvane::server {

// A browser cannot be started, or does not do what it is asked. what() is one sentence with the
// remedy, where there is one.
class BrowserError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orvane::server
