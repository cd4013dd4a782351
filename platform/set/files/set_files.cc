// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/set_files.h"

#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "files/set_file_reader.h"
#include "tvset/paths.h"

namespace fs = std::filesystem;

namespace tvset {
namespace {

// Initialised before any code runs: the interposed functions read it at any time.
std::atomic<const SetFiles*> g_running{nullptr};
std::atomic<unsigned> g_calls{0};

}  // namespace

std::string_view NameOf(SetFile file) {
  switch (file) {
    case SetFile::kMemoryStatistics:
      return "qm_memstat";
    case SetFile::kGpuMemory:
      return "gpu_memory";
    case SetFile::kGemInfo:
      return "gem_info";
    case SetFile::kDebugSwitch:
      return "debug";
    case SetFile::kProcessors:
      return "cpuinfo";
    case SetFile::kTop:
      return "top";
  }
  return {};
}

std::optional<SetFile> FindSetFile(std::string_view name) {
  for (const SetFile file : kSetFiles) {
    if (NameOf(file) == name) return file;
  }
  return std::nullopt;
}

SetFiles::SetFiles(FaultTable& faults, FeatureStore& features, LogBuffer& log)
    : faults_(faults), features_(features), log_(log) {}

void SetFiles::Replace(SetFile file, const std::string& text) {
  std::lock_guard<std::mutex> lock(mutex_);
  replacements_[file] = text;
}

void SetFiles::Remove(SetFile file) {
  std::lock_guard<std::mutex> lock(mutex_);
  replacements_[file] = std::nullopt;
}

void SetFiles::Restore(SetFile file) {
  std::lock_guard<std::mutex> lock(mutex_);
  replacements_.erase(file);
}

SetFileSource SetFiles::source(SetFile file) const {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto found = replacements_.find(file);
    if (found != replacements_.end()) {
      return found->second ? SetFileSource::kReplaced : SetFileSource::kRemoved;
    }
  }
  return FolderFile(file).empty() ? SetFileSource::kSet : SetFileSource::kFolder;
}

std::optional<std::string> SetFiles::Read(SetFile file) const {
  const SetFileReader::Access access = SetFileReader(*this).Open(file);
  if (access.answer != SetFileReader::AnswerKind::kText) return std::nullopt;
  return access.text;
}

bool SetFiles::in_force() {
  static const bool force = [] {
    const unsigned before = SetFileReader::CountOfCalls();
    struct stat status = {};
    if (stat("/etc/debug", &status) != 0) errno = 0;
    return SetFileReader::CountOfCalls() != before;
  }();
  return force;
}

void SetFiles::Reset(const Paths* paths) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    paths_ = paths;
    replacements_.clear();
  }
  g_running.store(paths == nullptr ? nullptr : this, std::memory_order_release);
}

// A folder counts as well: for the debug switch it is enough that something is there.
std::string SetFiles::FolderFile(SetFile file) const {
  std::lock_guard<std::mutex> lock(mutex_);
  if (paths_ == nullptr) return {};
  const fs::path path = paths_->files() / NameOf(file);
  std::error_code error;
  return fs::exists(path, error) ? path.string() : std::string();
}

const SetFiles* SetFileReader::Running() {
  g_calls.fetch_add(1, std::memory_order_relaxed);
  return g_running.load(std::memory_order_acquire);
}

unsigned SetFileReader::CountOfCalls() { return g_calls.load(std::memory_order_relaxed); }

}  // namespace tvset
