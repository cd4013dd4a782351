// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

#include "tvset/export.h"

namespace tvset {

// A request to the control interface that cannot be met; the set is as it was before, where a
// method does not say otherwise. The text is for a person: what failed, with which value, and what
// to do. Thrown to the runtime, the command line and tests alone, never out of one of the
// platform's C functions, which answer with their own codes.
class TVSET_EXPORT SetError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tvset
