// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// How this library writes to the platform's log.
//
// Callers write the message alone, as a printf format and its arguments; the macros put the place
// of the call before it:
//
//   LoggerI("App State : %d", state);
//     AppUtil.cc: GetAppState(<line>) > App State : 1
//
// A line is debug (the course of a call), info (what a call came to) or error (failures, and the
// few successes that field tools pick out by this priority). docs/log-lines.md tells how the lines
// are read, what each error means, and how a new one is worded.
//
// Any thread may log; the service writes each line in one piece and cuts it at 4076 bytes. What the
// service answers is ignored.

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include <dlog.h>

#include "common/fixed_lines.h"

namespace common {

// The tag of the library's own modules, which is everything in src/orvane/.
constexpr const char* kModuleTag = "QM_WEBAPI";

// The tag of what every web API library carries: the glue, scopes and assertions.
constexpr const char* kPluginsTag = "WEBAPI_PLUGINS";

// Where a line says that it comes from. Borrows its texts.
struct LogPlace {
  const char* file;
  const char* function;
  int line;
};

// Where the last part of `path` begins.
constexpr size_t BaseNameStart(std::string_view path) {
  return path.rfind('/') + 1;  // without a slash, npos + 1 is 0
}

// The name of the source file in which it stands, cut by the compiler and not at run time.
#define LOG_FILE_NAME \
  (&__FILE__[std::integral_constant<size_t, ::common::BaseNameStart(__FILE__)>::value])

// The file and the function in which it stands, with a number of fixed_lines.h or with __LINE__.
#define LOG_PLACE(number) (::common::LogPlace{LOG_FILE_NAME, __func__, (number)})

// Writes one line. `format` begins with the three placeholders of the place.
template <class... Arguments>
void WriteLogLine(log_priority priority, const char* tag, const LogPlace& place, const char* format,
                  Arguments... arguments) {
  __dlog_print(LOG_ID_MAIN, priority, tag, format, place.file, place.function, place.line,
               arguments...);
}

// Never runs: LOG_AT names it where nothing is evaluated, so that the compiler checks the formats,
// which the service's own declaration does not ask for.
__attribute__((format(printf, 1, 2))) inline int CheckFormat(const char* /*format*/, ...) {
  return 0;
}

// LOG_AT(priority, tag, place, format, arguments…). The format is a string literal.
#define LOG_AT(priority, tag, place, ...)                         \
  (static_cast<void>(sizeof(::common::CheckFormat(__VA_ARGS__))), \
   ::common::WriteLogLine(priority, tag, place, "%s: %s(%d) > " __VA_ARGS__))

// Lines of the library's modules: LoggerD(format, arguments…), and LoggerD_AT(line, format,
// arguments…) for one of fixed_lines.h.
#define LoggerD(...) LoggerD_AT(__LINE__, __VA_ARGS__)
#define LoggerI(...) LoggerI_AT(__LINE__, __VA_ARGS__)
#define LoggerE(...) LoggerE_AT(__LINE__, __VA_ARGS__)
#define LoggerD_AT(line, ...) LOG_AT(DLOG_DEBUG, ::common::kModuleTag, LOG_PLACE(line), __VA_ARGS__)
#define LoggerI_AT(line, ...) LOG_AT(DLOG_INFO, ::common::kModuleTag, LOG_PLACE(line), __VA_ARGS__)
#define LoggerE_AT(line, ...) LOG_AT(DLOG_ERROR, ::common::kModuleTag, LOG_PLACE(line), __VA_ARGS__)

// An error line of the glue, always one of fixed_lines.h.
#define PluginLoggerE_AT(line, ...) \
  LOG_AT(DLOG_ERROR, ::common::kPluginsTag, LOG_PLACE(line), __VA_ARGS__)

// Logs, at debug priority, that a scope is entered and, when it ends, that it is left, be it by a
// return or by an exception:
//
//   logger.h: ScopeLogger > XW_Extension.cc: OnShutdown(60) > Enter
//   logger.h: ~ScopeLogger(288) > XW_Extension.cc: OnShutdown > Exit
//
// Lives on the stack of its scope; see LOG_SCOPE.
class ScopeLogger {
 public:
  // Copies the names of the place: the scope may unload what they belong to. std::bad_alloc when
  // there is no memory for them, and then nothing is logged.
  explicit ScopeLogger(const LogPlace& place) : file_(place.file), function_(place.function) {
    // The blank behind the last word is part of the line.
    __dlog_print(LOG_ID_MAIN, DLOG_DEBUG, kPluginsTag,
                 "logger.h: ScopeLogger > %s: %s(%d) > Enter ", place.file, place.function,
                 place.line);
  }

  // A log call that throws ends the process here.
  ~ScopeLogger() {
    LOG_AT(DLOG_DEBUG, kPluginsTag, LOG_PLACE(fixed_line::kScopeExit), "%s: %s > Exit",
           file_.c_str(), function_.c_str());
  }

  ScopeLogger(const ScopeLogger&) = delete;
  ScopeLogger& operator=(const ScopeLogger&) = delete;
  ScopeLogger(ScopeLogger&&) = delete;
  ScopeLogger& operator=(ScopeLogger&&) = delete;

 private:
  // Fixed after construction; the file first.
  const std::string file_;
  const std::string function_;
};

// LOG_SCOPE() and LOG_SCOPE_AT(line) log the scope in which they stand. First statement of a
// function, so that everything that the function logs stands between.
#define LOG_SCOPE() LOG_SCOPE_AT(__LINE__)
#define LOG_SCOPE_AT(line) const ::common::ScopeLogger log_scope(LOG_PLACE(line))

}  // namespace common
