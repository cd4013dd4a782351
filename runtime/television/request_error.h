// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

namespace orvane::television {

// A request that cannot be met as things are: nothing was changed by it. Thrown by this folder's
// own checks and by the set process for its messages; what the set itself refuses is a
// tvset::SetError, and what is no JSON of the form wanted a base::JsonError. Whoever took the
// request from outside catches all of them alike and answers with what(): one or two sentences for
// a person, with the remedy.
class RequestError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orvane::television
