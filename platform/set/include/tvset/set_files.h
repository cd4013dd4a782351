// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "tvset/export.h"

namespace tvset {

class FaultTable;
class FeatureStore;
class LogBuffer;
class Paths;

// What only a set has, by the name that it has in the folder of replacements.
enum class SetFile {
  // "qm_memstat": /proc/<own pid>/qm_memstat.
  kMemoryStatistics,
  // "gpu_memory": /sys/kernel/debug/gpu/gpu_memory.
  kGpuMemory,
  // "gem_info": /sys/kernel/debug/dri/0/gem_info.
  kGemInfo,
  // "debug": /etc/debug, which the set itself does not have.
  kDebugSwitch,
  // "cpuinfo": /proc/cpuinfo, the machine's own.
  kProcessors,
  // "top": the command /usr/bin/top.
  kTop,
};
// Each of them.
inline constexpr std::array<SetFile, 6> kSetFiles{SetFile::kMemoryStatistics, SetFile::kGpuMemory,
                                                  SetFile::kGemInfo,          SetFile::kDebugSwitch,
                                                  SetFile::kProcessors,       SetFile::kTop};

// The name above, which faults and replacements have, too.
TVSET_EXPORT std::string_view NameOf(SetFile file);
// Empty: there is none of the name.
TVSET_EXPORT std::optional<SetFile> FindSetFile(std::string_view name);

// Where a file's content comes from, the first that applies.
enum class SetFileSource {
  // Remove: there is no such file.
  kRemoved,
  // Replace.
  kReplaced,
  // <state folder>/files/<name>.
  kFolder,
  // The set's own.
  kSet,
};

// The files and the tool that only a set has, as this process finds them at the set's own paths
// while a set runs in it: fopen, std::ifstream, stat and popen lead here, everything else in the
// process reaches the machine. The set's own figures are the kernel's for this process, see
// docs/decisions.
//
// Each can be replaced, by a file of its name in Paths::files() (for every process with a set on
// the state folder) or by Replace (for this process, until the set restarts; it comes first). In a
// replacement {pid} stands for the id of the process. A replacement of kTop is what the tool
// prints; one that is an executable file in the folder is run instead, with the tool's arguments.
//
// FaultTable::Fail takes "file:" and the name as well, with an errno value as the code: the file
// cannot be opened, the tool cannot be started. Owned by Set. Any thread; the interposed functions
// come in on whatever thread calls the C library.
class TVSET_EXPORT SetFiles {
 public:
  // All borrowed.
  SetFiles(FaultTable& faults, FeatureStore& features, LogBuffer& log);

  // {pid} as above.
  void Replace(SetFile file, const std::string& text);
  // Readers find none: ENOENT.
  void Remove(SetFile file);
  // Ends Replace and Remove.
  void Restore(SetFile file);
  // As a reader would find it now.
  SetFileSource source(SetFile file) const;

  // What a reader finds, for people to see; empty when there is none. For kTop, and for the
  // machine's own kProcessors: only a replacement.
  std::optional<std::string> Read(SetFile file) const;

  // False when the program loads the C library before this one: the files above are not there then.
  static bool in_force();

 private:
  friend class Set;
  friend class SetFileReader;

  // Of a set that starts on the paths (null: that stops). Ends what Replace and Remove did.
  void Reset(const Paths* paths);
  // The file that replaces it in the folder of replacements; empty: there is none.
  std::string FolderFile(SetFile file) const;

  FaultTable& faults_;
  FeatureStore& features_;
  LogBuffer& log_;
  mutable std::mutex mutex_;
  const Paths* paths_ = nullptr;                                // guarded by mutex_
  std::map<SetFile, std::optional<std::string>> replacements_;  // guarded by mutex_; empty: removed
};

}  // namespace tvset
