// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <exception>

#include "log.h"

namespace common {

// The one guard of the framework: each of its own callbacks that the host has passes it, and so
// does each job of a Worker, whose thread must not end. Any thread; `call` runs on the calling one,
// once. What a library registers besides (its created and its shutdown callback) it guards itself.
//
// Runs `call` and answers what it returns. An exception ends here, since none may reach the C code
// around us: it is logged with the name of the `entry` that it left, and `fallback` is the answer.
// `entry` lives for the call and is for whoever reads the log.
template <class Call, class Result>
Result Guarded(const char* entry, Result fallback, Call&& call) noexcept {
  try {
    return call();
  } catch (const std::exception& error) {
    FRAMEWORK_LOG_ERROR("guard.h", "%s: an exception was stopped: %s", entry, error.what());
  } catch (...) {
    FRAMEWORK_LOG_ERROR("guard.h", "%s: an exception of unknown type was stopped", entry);
  }
  return fallback;
}

// The same for an entry without an answer. A std::function that is empty counts as one that throws
// std::bad_function_call.
template <class Call>
void Guarded(const char* entry, Call&& call) noexcept {
  Guarded(entry, 0, [&call] {
    call();
    return 0;
  });
}

}  // namespace common
