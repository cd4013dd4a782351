// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The log. Results: the number of bytes of text kept; -22 for a NULL tag or format, an unknown log
// or an unknown priority; -1 for a log that the set's policy closes. Writing needs no state folder,
// so it does not start the set.
#include <algorithm>
#include <cstdarg>
#include <optional>

#include <dlog.h>

#include "log/format_text.h"
#include "tvset/set.h"

namespace tvset {
namespace {

constexpr int kBadParameter = -22;

__attribute__((format(printf, 5, 0))) int Print(const char* function, int log_id, int priority,
                                                const char* tag, const char* format,
                                                va_list arguments) noexcept {
  try {
    Set& set = Set::Instance();
    if (const std::optional<int> code = set.faults().Take(function)) return *code;
    if (tag == nullptr || format == nullptr) return kBadParameter;
    if (const int refused = set.log().Admit(log_id, priority); refused != 0) return refused;
    char text[LogBuffer::kMaxText + 1];  // not filled first: it is large and mostly stays empty
    const int length = FormatText(text, sizeof(text), format, arguments);
    if (length < 0) return kBadParameter;
    const size_t kept = std::min(static_cast<size_t>(length), LogBuffer::kMaxText);
    return set.log().Write(log_id, priority, tag, std::string_view(text, kept));
  } catch (...) {
    return kBadParameter;
  }
}

}  // namespace
}  // namespace tvset

TVSET_EXPORT int __dlog_print(log_id_t log_id, int prio, const char* tag, const char* fmt, ...) {
  va_list arguments;
  va_start(arguments, fmt);
  const int result = tvset::Print("__dlog_print", log_id, prio, tag, fmt, arguments);
  va_end(arguments);
  return result;
}

TVSET_EXPORT int dlog_print(log_priority prio, const char* tag, const char* fmt, ...) {
  va_list arguments;
  va_start(arguments, fmt);
  const int result = tvset::Print("dlog_print", LOG_ID_APPS, prio, tag, fmt, arguments);
  va_end(arguments);
  return result;
}
