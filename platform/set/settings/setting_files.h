// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tvset {

class Paths;

// Where settings lie below a state folder: one file per key, and beside them, for a moment, the
// files that are still being written. Partner of Settings. Any thread, no state.

// A key's first part. The files of all keys that begin with it are in one folder.
struct SettingPrefix {
  // With its slash.
  std::string_view text;
  // Below the state folder.
  std::string_view folder;
  // Over restarts.
  bool kept;
};

// Null: no setting has such a key. It need not be whole: the prefix alone is found as well.
const SettingPrefix* SettingPrefixOf(std::string_view key);

// Empty: it is no key, since it has another prefix or leaves the prefix's folder.
std::filesystem::path SettingFile(const Paths& paths, const std::string& key);

// The key of a file, by its path relative to the state folder; empty when it is none of a setting.
std::string KeyOfSettingFile(const std::filesystem::path& relative);

// Whether a setting may be at this path, relative to the state folder, or below it.
bool LeadsToSettings(const std::filesystem::path& relative);

// The keys that there are, in no order, as the files lie there now. Files that are being written
// are none.
std::vector<std::string> SettingKeys(const Paths& paths);

// Puts a file of these bytes in the place of the old one, so that a reader finds the one or the
// other whole. `kept`: it is on the disk when this returns. False: the old one is still there.
bool ReplaceSettingFile(const std::filesystem::path& file, std::string_view bytes, bool kept);

}  // namespace tvset
