// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/features.h"

#include "profile_reader.h"
#include "tvset/error.h"

namespace tvset {
namespace {

constexpr size_t kMaxKey = 255;
constexpr std::string_view kScheme = "http://";

std::string_view Normalised(std::string_view key) {
  if (key.substr(0, kScheme.size()) == kScheme) key.remove_prefix(kScheme.size());
  return key;
}

}  // namespace

bool IsFeatureType(std::string_view type) {
  return type == "bool" || type == "int" || type == "double" || type == "string";
}

FeatureStore::FeatureStore(EventHub& events) : events_(events) {}

void FeatureStore::Set(const std::string& key, const std::string& type, const std::string& text,
                       FeatureGroup group) {
  if (!IsFeatureType(type)) {
    throw SetError("\"" + type + "\" is no feature type; there are bool, int, double and string");
  }
  const std::string name(Normalised(key));
  if (name.empty() || name.size() > kMaxKey) {
    throw SetError("a feature key has 1 to " + std::to_string(kMaxKey) + " bytes, not " +
                   std::to_string(name.size()));
  }
  {
    std::lock_guard<std::mutex> lock(mutex_);
    texts_[Slot{name, type, group}] = text;
  }
  events_.Notify([&name](Observer& observer) { observer.OnFeatureChanged(name); });
}

void FeatureStore::Remove(const std::string& key) {
  const std::string name(Normalised(key));
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto first = texts_.lower_bound(SlotView{name, "", FeatureGroup::kPlatform});
    auto last = first;
    while (last != texts_.end() && std::get<0>(last->first) == name) ++last;
    if (first == last) return;
    texts_.erase(first, last);
  }
  events_.Notify([&name](Observer& observer) { observer.OnFeatureChanged(name); });
}

std::optional<std::string> FeatureStore::Find(std::string_view key, std::string_view type,
                                              FeatureGroup group) const {
  std::lock_guard<std::mutex> lock(mutex_);
  const auto found = texts_.find(SlotView{Normalised(key), type, group});
  if (found == texts_.end()) return std::nullopt;
  return found->second;
}

std::vector<Feature> FeatureStore::list() const {
  std::vector<Feature> features;
  std::lock_guard<std::mutex> lock(mutex_);
  for (const auto& [slot, text] : texts_) {
    const auto& [key, type, group] = slot;
    features.push_back(Feature{key, type, text, group});
  }
  return features;
}

void FeatureStore::Load(const std::filesystem::path& profile) { Adopt(ReadProfile(profile)); }

void FeatureStore::Adopt(ProfileContent content) {
  std::map<Slot, std::string, SlotLess> texts;
  for (Feature& feature : content.features) {
    texts[Slot{Normalised(feature.key), feature.type, feature.group}] = std::move(feature.text);
  }
  std::lock_guard<std::mutex> lock(mutex_);
  texts_ = std::move(texts);
  warnings_ = std::move(content.warnings);
}

std::vector<std::string> FeatureStore::warnings() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return warnings_;
}

}  // namespace tvset
