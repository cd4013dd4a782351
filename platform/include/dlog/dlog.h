// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The platform's log.
#include <dlog-internal.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef enum {
  DLOG_UNKNOWN = 0,
  DLOG_DEFAULT = 1,
  DLOG_VERBOSE = 2,
  DLOG_DEBUG = 3,
  DLOG_INFO = 4,
  DLOG_WARN = 5,
  DLOG_ERROR = 6,
  DLOG_FATAL = 7,
  DLOG_SILENT = 8,
  DLOG_PRIO_MAX = 9,
} log_priority;

// Writes to the log of applications; results as for __dlog_print.
int dlog_print(log_priority prio, const char* tag, const char* fmt, ...);

#ifdef __cplusplus
}  // extern "C"
#endif
