// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

#include "tvset/export.h"

namespace tvset {

// A request to the control interface that cannot be met. The text says what failed, with which
// value, and what to do. Never thrown out of one of the platform's C functions.
class TVSET_EXPORT SetError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tvset
