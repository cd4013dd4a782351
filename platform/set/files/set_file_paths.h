// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <utility>

#include "tvset/set_files.h"

namespace tvset {

// Whether a text begins with another one; a few comparisons in a row, no loop and no call.
template <size_t kSize, size_t... kIndexes>
inline bool BeginsWith(const char* text, const char (&prefix)[kSize],
                       std::index_sequence<kIndexes...> /*indexes*/) {
  return ((text[kIndexes] == prefix[kIndexes]) && ...);
}

template <size_t kSize>
inline bool BeginsWith(const char* text, const char (&prefix)[kSize]) {
  return BeginsWith(text, prefix, std::make_index_sequence<kSize - 1>());
}

// False for a path that names none of the set's files, null included, but for a few that look much
// like one. Every stream that the process opens comes by here.
inline bool MayBeSetFile(const char* path) {
  if (path == nullptr || path[0] != '/') return false;
  if (path[1] == 'p') {
    return BeginsWith(path, "/proc/") && (path[6] == 'c' || (path[6] >= '1' && path[6] <= '9'));
  }
  if (path[1] == 's') return BeginsWith(path, "/sys/kernel/debug/");
  return path[1] == 'e' && BeginsWith(path, "/etc/debug");
}

// The file that a path names, as the set has it for this process: where a path has a process id in
// it, that has to be this one's. No locks, no allocation, no static state, since it is called from
// within the C library's own functions, and before main. Empty: it is none of them, or null.
std::optional<SetFile> SetFileAt(const char* path);

}  // namespace tvset
