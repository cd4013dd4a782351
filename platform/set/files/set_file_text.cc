// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "files/set_file_text.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <map>
#include <sstream>
#include <vector>

#include <dlog.h>

#include "file_text.h"
#include "files/drm_usage.h"
#include "tvset/profile_keys.h"

namespace tvset {
namespace {

constexpr uint64_t kPageSize = 4096;  // of the set's graphics memory

// One word, whatever the process is called.
std::string ProcessName() {
  std::string name = ReadFileBytes("/proc/self/comm").value_or("");
  while (!name.empty() && name.back() == '\n') name.pop_back();
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isgraph(c) == 0; }, '_');
  return name.empty() ? "process" : name;
}

std::string ProfileText(const FeatureStore& features, const char* key, const char* type) {
  return features.Find(key, type, FeatureGroup::kCustom).value_or("");
}

// The whole of a word as a number.
std::optional<uint64_t> Number(std::string_view word) {
  uint64_t number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (error != std::errc() || end != word.data() + word.size()) return std::nullopt;
  return number;
}

std::vector<uint64_t> ProfileBuffers(const FeatureStore& features, LogBuffer& log) {
  std::vector<uint64_t> sizes;
  std::istringstream words(ProfileText(features, kGemBuffersKey, "string"));
  for (std::string word; words >> word;) {
    if (const std::optional<uint64_t> size = Number(word)) {
      sizes.push_back(*size);
    } else {
      log.WriteRefusal(std::string(kGemBuffersKey) + " holds \"" + word +
                       "\", which is no size in bytes, and is passed over");
    }
  }
  return sizes;
}

}  // namespace

std::optional<std::string> MemoryStatisticsText() {
  const std::optional<std::string> rollup = ReadFileBytes("/proc/self/smaps_rollup");
  if (!rollup) return std::nullopt;
  std::istringstream lines(*rollup);
  std::map<std::string, uint64_t> kib;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string key;
    uint64_t figure = 0;
    if (words >> key >> figure) kib[key] = figure;
  }
  if (kib.count("Pss:") == 0) return std::nullopt;
  std::ostringstream text;
  text << "Memory of a process, in KiB\n"
          "  PID NAME RSS SHARED_CLEAN SHARED_DIRTY PRIVATE_CLEAN PRIVATE_DIRTY PSS SWAP\n"
       << getpid() << " " << ProcessName();
  for (const char* key : {"Rss:", "Shared_Clean:", "Shared_Dirty:", "Private_Clean:",
                          "Private_Dirty:", "Pss:", "Swap:"}) {
    text << " " << kib[key];
  }
  text << "\n";
  return text.str();
}

std::string GpuMemoryText(const FeatureStore& features) {
  const DrmUsage usage = DrmUsage::OfThisProcess();
  const uint64_t kib = usage.found()
                           ? usage.private_bytes() >> 10
                           : Number(ProfileText(features, kGpuMemoryKey, "int")).value_or(0);
  std::ostringstream text;
  text << "Graphics memory by process\n"
          "\n"
          "NAME PID SIZE_KIB\n"
       << ProcessName() << " " << getpid() << " " << kib << "\n";
  return text.str();
}

std::string GemInfoText(const FeatureStore& features, LogBuffer& log) {
  const DrmUsage usage = DrmUsage::OfThisProcess();
  const std::vector<uint64_t> sizes =
      usage.found() ? usage.shared_bytes() : ProfileBuffers(features, log);
  std::ostringstream text;
  text << "Graphics buffers\n"
          "PID UID HANDLE FLAGS SIZE PAGES OFFSET PINS MAPPINGS NAME HOLDERS\n";
  uint64_t offset = 0;
  unsigned handle = 0;
  for (const uint64_t size : sizes) {
    const uint64_t pages = size / kPageSize + (size % kPageSize != 0 ? 1 : 0);
    // Contiguous memory, held by the process and by the compositor: what a set counts.
    text << getpid() << " " << getuid() << " " << ++handle << " 0x1 " << size << " " << pages << " "
         << offset << " 1 1 window_buffer 2\n";
    offset += pages * kPageSize;
  }
  return text.str();
}

}  // namespace tvset
