// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "files/drm_usage.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <map>
#include <system_error>

#include "file_text.h"

namespace fs = std::filesystem;

namespace tvset {
namespace {

std::string_view Trimmed(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// "12", "12 KiB" and "12 MiB"; empty for anything else.
std::optional<uint64_t> Bytes(std::string_view text) {
  uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return std::nullopt;
  const std::string_view unit = Trimmed(text.substr(static_cast<size_t>(end - text.data())));
  if (unit.empty()) return number;
  if (unit == "KiB") return number << 10;
  if (unit == "MiB") return number << 20;
  return std::nullopt;
}

// One region's figures; which of them a driver gives differs.
struct Region {
  std::optional<uint64_t> resident, memory, total, shared;

  // What the buffers take now: resident, or its older name, or all that was ever asked for.
  uint64_t taken() const { return resident.value_or(memory.value_or(total.value_or(0))); }
};

struct Client {
  std::string device;
  std::string id;
  std::map<std::string, Region, std::less<>> regions;

  void Read(std::string_view key, std::string_view value) {
    if (key == "drm-pdev") device = value;
    if (key == "drm-client-id") id = value;
    ReadFigure(key, "drm-resident-", value, &Region::resident);
    ReadFigure(key, "drm-memory-", value, &Region::memory);
    ReadFigure(key, "drm-total-", value, &Region::total);
    ReadFigure(key, "drm-shared-", value, &Region::shared);
  }

 private:
  void ReadFigure(std::string_view key, std::string_view prefix, std::string_view value,
                  std::optional<uint64_t> Region::*figure) {
    if (key.substr(0, prefix.size()) != prefix) return;
    if (const std::optional<uint64_t> bytes = Bytes(value)) {
      regions[std::string(key.substr(prefix.size()))].*figure = bytes;
    }
  }
};

Client ReadClient(std::string_view text) {
  Client client;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos) continue;
    client.Read(Trimmed(line.substr(0, colon)), Trimmed(line.substr(colon + 1)));
  }
  return client;
}

}  // namespace

void DrmUsage::Add(std::string_view fdinfo) {
  const Client client = ReadClient(fdinfo);
  if (client.id.empty() || client.regions.empty()) return;
  if (!clients_.insert(client.device + " " + client.id).second) return;
  for (const auto& [name, region] : client.regions) {
    const uint64_t shared = std::min(region.shared.value_or(0), region.taken());
    private_bytes_ += region.taken() - shared;
    if (shared != 0) shared_bytes_.push_back(shared);
  }
}

DrmUsage DrmUsage::OfThisProcess() {
  DrmUsage usage;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator("/proc/self/fdinfo", error)) {
    if (const std::optional<std::string> text = ReadFileBytes(entry.path())) usage.Add(*text);
  }
  return usage;
}

}  // namespace tvset
