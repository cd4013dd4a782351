// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>

#include "tvset/export.h"

namespace tvset {

// Where the set keeps its things, below one state folder. Only names: nothing is made, and nothing
// need be there but while a set runs on the folder. People may read and replace what is there, and
// tests do. Not changed after construction: any thread.
class TVSET_EXPORT Paths {
 public:
  explicit Paths(std::filesystem::path state_folder);

  const std::filesystem::path& state_folder() const { return state_folder_; }
  // Holds one folder per application; what variable 61 names.
  std::filesystem::path app_root() const { return state_folder_ / "apps_rw"; }
  // An application's own, which outlives its installation and the set's restart.
  std::filesystem::path app_data(const std::string& package) const {
    return app_root() / package / "data";
  }
  // Settings that outlive a restart, with the folders db and file in it.
  std::filesystem::path settings() const { return state_folder_ / "kdb"; }
  // Settings that do not.
  std::filesystem::path memory_settings() const { return state_folder_ / "run" / "memory"; }
  // The set's own random id, made on its first start.
  std::filesystem::path device_id_file() const { return state_folder_ / "etc" / "tizenid"; }
  // Replacements of the files that only a set has; made by whoever puts one there.
  std::filesystem::path files() const { return state_folder_ / "files"; }
  // Locked, shared, by every process in which the set runs.
  std::filesystem::path lock_file() const { return state_folder_ / "lock"; }

  // The state folder when none is given: $ORVANE_STATE, else $XDG_STATE_HOME/orvane, else
  // ~/.local/state/orvane. Throws SetError when none of them is known.
  static std::filesystem::path DefaultStateFolder();
  // The profile of that name among those that ship with the set, or the file of that path. Throws
  // SetError, with the shipped names, when there is neither.
  static std::filesystem::path FindProfile(const std::string& name_or_path);

 private:
  std::filesystem::path state_folder_;
};

}  // namespace tvset
