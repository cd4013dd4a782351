// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "files/set_file_paths.h"

#include <unistd.h>

#include <charconv>
#include <string_view>
#include <system_error>

namespace tvset {
namespace {

constexpr std::string_view kProc = "/proc/";
constexpr std::string_view kStatistics = "/qm_memstat";

// "/proc/<own process id>/qm_memstat"
bool IsMemoryStatistics(std::string_view path) {
  if (path.size() <= kProc.size() + kStatistics.size()) return false;
  if (path.substr(0, kProc.size()) != kProc) return false;
  if (path.substr(path.size() - kStatistics.size()) != kStatistics) return false;
  const char* const first = path.data() + kProc.size();
  const char* const last = path.data() + path.size() - kStatistics.size();
  long pid = 0;
  const auto [end, error] = std::from_chars(first, last, pid);
  return *first != '0' && error == std::errc() && end == last && pid == getpid();
}

}  // namespace

std::optional<SetFile> SetFileAt(const char* path) {
  if (!MayBeSetFile(path)) return std::nullopt;
  const std::string_view text = path;
  if (text == "/sys/kernel/debug/gpu/gpu_memory") return SetFile::kGpuMemory;
  if (text == "/sys/kernel/debug/dri/0/gem_info") return SetFile::kGemInfo;
  if (text == "/etc/debug") return SetFile::kDebugSwitch;
  if (text == "/proc/cpuinfo") return SetFile::kProcessors;
  if (IsMemoryStatistics(text)) return SetFile::kMemoryStatistics;
  return std::nullopt;
}

}  // namespace tvset
