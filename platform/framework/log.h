// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <dlog.h>

namespace common {

template <class... Arguments>
void LogErrorAt(const char* file, const char* function, int line, const char* format,
                Arguments... arguments) {
  __dlog_print(LOG_ID_MAIN, DLOG_ERROR, "WEBAPI_PLUGINS", format, file, function, line,
               arguments...);
}

}  // namespace common

// FRAMEWORK_LOG_ERROR(file, format, arguments…): an error line of the framework in the platform's
// log, in the form that all web API modules share.
#define FRAMEWORK_LOG_ERROR(file, ...) \
  ::common::LogErrorAt(file, __func__, __LINE__, "%s: %s(%d) > " __VA_ARGS__)
