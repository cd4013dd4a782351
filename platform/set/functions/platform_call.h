// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <utility>

#include "tvset/set.h"

namespace tvset {

// A platform function's body is one return of one of these. `function` is its name as FaultTable
// has it. `work` gets the running set; one with default options is started for it when none runs,
// so that an application's call works in any process. No lock is held while it runs.

// The frame of every platform function: a fault that is set for it comes first, then the function's
// own work on the running set. No exception leaves it: what cannot be done (no memory, no state
// folder) is answered with `on_exception`, the function's code for a failure of the platform
// itself.
template <typename Work>
int PlatformCall(const char* function, int on_exception, Work&& work) noexcept {
  try {
    if (const std::optional<int> code = Set::Instance().faults().Take(function)) return *code;
    return std::forward<Work>(work)(Set::Current());
  } catch (...) {
    return on_exception;
  }
}

// The same for a function that answers something else than a code, such as a text or a value of an
// enumeration: a fault, whatever its code, and an exception both give `on_failure`.
template <typename Result, typename Work>
Result PlatformValue(const char* function, Result on_failure, Work&& work) noexcept {
  try {
    if (Set::Instance().faults().Take(function)) return on_failure;
    return std::forward<Work>(work)(Set::Current());
  } catch (...) {
    return on_failure;
  }
}

}  // namespace tvset
