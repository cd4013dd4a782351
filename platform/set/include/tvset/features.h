// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

struct ProfileContent;

// Which of the platform's functions read a key: those of a device's model, or the "custom" ones.
// The other group's value of the key is none for them.
enum class FeatureGroup { kPlatform, kCustom };

// One value of one key. A key may have a value of each type in each group.
struct Feature {
  // Without "http://".
  std::string key;
  // "bool", "int", "double" or "string".
  std::string type;
  // As it stands in the profile, blanks included.
  std::string text;
  FeatureGroup group = FeatureGroup::kCustom;
};

// The feature keys of the device, which the platform's system_info functions look up: those of its
// profile, then what was set since, until the set restarts or takes another profile. "http://"
// before a key may be left out everywhere. A value is text as it was given: whether it is one of
// its type is for who reads it. Set and Remove are told to Observer::OnFeatureChanged on the
// calling thread. Owned by Set. Any thread.
class TVSET_EXPORT FeatureStore {
 public:
  // Borrowed.
  explicit FeatureStore(EventHub& events);

  // Adds or replaces. Throws SetError for an unknown type, and for a key that is empty or above 255
  // bytes.
  void Set(const std::string& key, const std::string& type, const std::string& text,
           FeatureGroup group);
  // Of every type and group; no effect when there is none.
  void Remove(const std::string& key);
  // The text of the key's value of that type; empty when it has none.
  std::optional<std::string> Find(std::string_view key, std::string_view type,
                                  FeatureGroup group) const;
  // By key, then type, then group.
  std::vector<Feature> list() const;

  // Replaces everything by the profile's entries. Throws SetError, which names file, line and
  // entry, for a file that cannot be read, is no XML, has another root than model-config, or has an
  // entry with an unknown type; the store is then as it was.
  void Load(const std::filesystem::path& profile);
  // Entries of the profile that the platform passes over or reads as something else than they say,
  // one sentence each with file, line and entry.
  std::vector<std::string> warnings() const;

 private:
  friend class Set;
  // Key, type and group: a key may have a value of each type in each group. Looked up without a
  // copy.
  using Slot = std::tuple<std::string, std::string, FeatureGroup>;
  using SlotView = std::tuple<std::string_view, std::string_view, FeatureGroup>;
  struct SlotLess {
    using is_transparent = void;  // NOLINT(readability-identifier-naming): the standard's name
    template <typename Left, typename Right>
    bool operator()(const Left& left, const Right& right) const {
      return SlotView(left) < SlotView(right);
    }
  };

  // Replaces everything. Tells nobody: Set does, when the profile changes.
  void Adopt(ProfileContent content);

  EventHub& events_;
  mutable std::mutex mutex_;
  // Guarded by mutex_:
  std::map<Slot, std::string, SlotLess> texts_;
  // Of the profile that was taken last.
  std::vector<std::string> warnings_;
};

}  // namespace tvset
