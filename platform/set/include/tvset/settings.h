// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

class Paths;

struct Setting {
  std::string key;
  int type = 0;       // VCONF_TYPE_…
  std::string value;  // for a person; empty for a type that is not known
};

// The platform's settings: one file per key below the state folder, written whole and renamed into
// place, so that another process reads either the old value or the new one. A file holds the type
// as a native int, then the value; a string without its terminating zero. Keys begin with "db/",
// "file/" (kept over restarts) or "memory/" (gone at the set's restart). Any thread, any process.
class TVSET_EXPORT Settings {
 public:
  explicit Settings(EventHub& events);

  // False: the key has another prefix, leaves its folder, is too long or is a folder, or the file
  // cannot be written. The old value is then still there.
  bool SetString(const std::string& key, const std::string& value);
  // Empty: no such key, or its value is no string.
  std::optional<std::string> GetString(const std::string& key) const;
  bool Exists(const std::string& key) const;
  bool Remove(const std::string& key);  // false: it was not there
  std::vector<Setting> list() const;    // by key

 private:
  friend class Set;
  void Reset(const Paths* paths);
  std::optional<std::string> FileOf(const std::string& key) const;

  EventHub& events_;
  mutable std::mutex mutex_;
  const Paths* paths_ = nullptr;  // guarded by mutex_
};

}  // namespace tvset
