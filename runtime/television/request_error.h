// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

namespace orvane::television {

// A request that cannot be met. what() is the answer: one or two sentences for a person, with the
// remedy.
class RequestError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orvane::television
