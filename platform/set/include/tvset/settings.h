// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

class Paths;
class Set;
class SettingWatches;

// One setting as it was read.
struct Setting {
  // With its prefix, such as "db/menu/language".
  std::string key;
  // VCONF_TYPE_…
  int type = 0;
  // For a person, and as Set takes it: a number with all its digits, "true" or "false"; empty for a
  // type that is not known.
  std::string value;
};

// The platform's settings: one file per key below the state folder, written whole and renamed into
// place, so that another process reads either the old value or the new one. A file holds the type
// as a native int, then the value; a string without its terminating zero. Keys begin with "db/",
// "file/" (kept over restarts) or "memory/" (gone at the set's restart). Any thread, any process.
//
// While the set runs, one thread of the settings hears of the changes of all processes, this one's
// among them, and makes the calls of Watch and of Observer::OnSettingChanged, one after the other.
// A change is told soon after it was made, so the value that is read then may be a later one. Where
// the kernel has no watches left (fs.inotify.max_user_watches, max_user_instances), and where no
// set runs, only this process's changes are told to observers, on the thread that made them. When
// it lost changes (fs.inotify.max_queued_events), every setting that there is counts as changed.
class TVSET_EXPORT Settings {
 public:
  // `events` is borrowed.
  explicit Settings(EventHub& events);
  // Those of a state folder on which this process runs no set; `paths` is borrowed.
  Settings(EventHub& events, const Paths& paths);
  ~Settings();
  Settings(const Settings&) = delete;
  Settings& operator=(const Settings&) = delete;

  // False: the key has another prefix, leaves its folder, is too long or is a folder, or the file
  // cannot be written. The old value is then still there.
  bool SetString(const std::string& key, const std::string& value);
  // Empty: no such key, or its value is no string.
  std::optional<std::string> GetString(const std::string& key) const;
  // The same for a value of any type, from the text that a person gives: digits for an int, a
  // decimal number for a double, "true" or "false" (or 1 or 0) for a bool. False: also for a text
  // that is no such value.
  bool Set(const std::string& key, int type, const std::string& text);
  // As it is stored now, by whatever process. Empty: no such key, or its file cannot be read.
  std::optional<Setting> Find(const std::string& key) const;
  // Whether the key names a place in the settings; there need be nothing.
  static bool IsKey(const std::string& key);
  // Whether there is a value now, of whatever type.
  bool Exists(const std::string& key) const;
  // False: it was not there.
  bool Remove(const std::string& key);
  // By key.
  std::vector<Setting> list() const;

  // Who watches: a key can be watched once by each.
  using Watcher = const void*;
  // Calls back after the key was changed or removed, by whatever process, on the thread of the
  // settings; a change from just before may be told as well. False: there is no such key, or no
  // change is heard, or the watcher watches it already. A restart of the set ends all watches.
  bool Watch(const std::string& key, Watcher watcher,
             std::function<void(const std::string& key)> callback);
  // False: there is no such watch. When it returns, the callback neither runs nor will, unless it
  // is called from the callback itself.
  bool Unwatch(const std::string& key, Watcher watcher);

 private:
  friend class tvset::Set;
  // Of a set that starts on the paths (null: that stops). Ends all watches.
  void Reset(const Paths* paths);
  // Empty: the key is none.
  std::optional<std::string> FileOf(const std::string& key) const;

  std::shared_ptr<SettingWatches> watches() const;
  bool Write(const std::string& key, int type, std::string_view value);
  // To the observers, where no thread hears of changes.
  void TellUnlessWatched(const std::string& key);

  EventHub& events_;
  mutable std::mutex mutex_;
  // Guarded by mutex_:
  const Paths* paths_ = nullptr;
  // Shared with its thread; null: no change is heard.
  std::shared_ptr<SettingWatches> watches_;
};

}  // namespace tvset
