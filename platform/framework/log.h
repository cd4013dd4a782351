// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <dlog.h>

namespace common {

// For the macro below, which adds where it stands. `format` is printf's; all texts live for the
// call. Any thread. What the platform's log does with a line is its own affair, and a failure to
// write one goes unnoticed: an error path has nobody to tell.
template <class... Arguments>
void LogErrorAt(const char* file, const char* function, int line, const char* format,
                Arguments... arguments) {
  __dlog_print(LOG_ID_MAIN, DLOG_ERROR, "WEBAPI_PLUGINS", format, file, function, line,
               arguments...);
}

}  // namespace common

// FRAMEWORK_LOG_ERROR(file, format, arguments…): an error line of the framework in the platform's
// log, in the form that all web API modules share: "file: function(line) > text". `file` is the
// name without a folder, and a literal, as is the format.
#define FRAMEWORK_LOG_ERROR(file, ...) \
  ::common::LogErrorAt(file, __func__, __LINE__, "%s: %s(%d) > " __VA_ARGS__)
