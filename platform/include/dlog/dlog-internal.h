// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The log's lower call, which names the log to write to.

#ifdef __cplusplus
extern "C" {
#endif

typedef enum {
  LOG_ID_INVALID = -1,
  LOG_ID_MAIN = 0,
  LOG_ID_RADIO = 1,
  LOG_ID_SYSTEM = 2,
  LOG_ID_APPS = 3,
  LOG_ID_MAX = 4,
} log_id_t;

// The number of bytes written, or a negative code: -22 for a NULL tag, an unknown log or an unknown
// priority, -1 when the line is filtered out. Text beyond 4076 bytes is cut.
int __dlog_print(log_id_t log_id, int prio, const char* tag, const char* fmt, ...);

#ifdef __cplusplus
}  // extern "C"
#endif
