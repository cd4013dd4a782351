// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Assertions that hold in every build, whatever NDEBUG says. What is asserted in this library is a
// contract with the runtime or with the script: an instance without its extension, a message that
// the script cannot have sent. Once that is broken, any answer could be one page's secret given to
// another.

#include <assert.h>

#include "common/logger.h"

namespace common {

// Logs "assert(<expression>)" and ends the process as a failed assertion of the C library does:
// with `condition` on the standard error output, and SIGABRT.
[[noreturn]] inline void FailAssertion(const LogPlace& place, const char* expression,
                                       const char* condition) {
  // The line has room for a text, which no assertion of this library has.
  LOG_AT(DLOG_ERROR, kPluginsTag, place, "assert(%s)%s", expression, "");
  __assert_fail(condition, place.file, static_cast<unsigned>(place.line), place.function);
}

// LOG_ASSERT(expression), and LOG_ASSERT_AT(line, expression) for one of fixed_lines.h: end the
// process unless `expression` holds. The JSON library's own assertions come here as well, with its
// header as the file and its member as the function.
#define LOG_ASSERT(expression) LOG_ASSERT_AT(__LINE__, expression)
#define LOG_ASSERT_AT(line, expression)                                                     \
  do {                                                                                      \
    if (!(expression)) {                                                                    \
      ::common::FailAssertion(LOG_PLACE(line), #expression, "!!(" #expression ") && \"\""); \
    }                                                                                       \
  } while (false)

}  // namespace common
