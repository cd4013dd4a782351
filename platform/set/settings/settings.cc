// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/settings.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include <vconf.h>

#include "file_text.h"
#include "settings/setting_files.h"
#include "settings/setting_watches.h"
#include "tvset/paths.h"

namespace fs = std::filesystem;

namespace tvset {
namespace {

constexpr size_t kMaxPath = 1023;  // bytes of a file's full path

struct Stored {
  int type;
  std::string bytes;
};

std::optional<Stored> ReadStored(const std::string& file) {
  const std::optional<std::string> bytes = ReadFileBytes(file);
  Stored stored{};
  if (!bytes || bytes->size() < sizeof(stored.type)) return std::nullopt;
  std::memcpy(&stored.type, bytes->data(), sizeof(stored.type));
  stored.bytes = bytes->substr(sizeof(stored.type));
  return stored;
}

template <typename Value>
std::string NumberText(const std::string& bytes) {
  Value value{};
  if (bytes.size() != sizeof(value)) return {};
  std::memcpy(&value, bytes.data(), sizeof(value));
  char text[64];
  const auto [end, error] = std::to_chars(text, text + sizeof(text), value);
  return error == std::errc() ? std::string(text, end) : std::string();
}

std::string BoolText(const std::string& bytes) {
  const std::string number = NumberText<int>(bytes);
  if (number.empty()) return {};
  return number == "0" ? "false" : "true";
}

std::string TextOf(const Stored& stored) {
  switch (stored.type) {
    case VCONF_TYPE_STRING:
      return stored.bytes;
    case VCONF_TYPE_INT:
      return NumberText<int>(stored.bytes);
    case VCONF_TYPE_BOOL:
      return BoolText(stored.bytes);
    case VCONF_TYPE_DOUBLE:
      return NumberText<double>(stored.bytes);
    default:
      return {};
  }
}

// The bytes of a value as they stand in a file.
template <typename Value>
std::string BytesOf(Value value) {
  std::string bytes(sizeof(value), '\0');
  std::memcpy(bytes.data(), &value, sizeof(value));
  return bytes;
}

template <typename Value>
std::optional<std::string> NumberBytes(const std::string& text) {
  Value value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return BytesOf(value);
}

// The value that a person's text stands for; empty when it stands for none of the type.
std::optional<std::string> ValueOf(int type, const std::string& text) {
  switch (type) {
    case VCONF_TYPE_STRING:
      return text;
    case VCONF_TYPE_INT:
      return NumberBytes<int>(text);
    case VCONF_TYPE_DOUBLE:
      return NumberBytes<double>(text);
    case VCONF_TYPE_BOOL:
      if (text == "true" || text == "1") return BytesOf(1);
      if (text == "false" || text == "0") return BytesOf(0);
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

}  // namespace

Settings::Settings(EventHub& events) : events_(events) {}

Settings::Settings(EventHub& events, const Paths& paths) : events_(events), paths_(&paths) {}

Settings::~Settings() { Reset(nullptr); }

void Settings::Reset(const Paths* paths) {
  std::shared_ptr<SettingWatches> watches;
  if (paths != nullptr) {
    watches = SettingWatches::Start(*paths, [&events = events_](const std::string& key) {
      events.Notify([&key](Observer& observer) { observer.OnSettingChanged(key); });
    });
  }
  {
    std::lock_guard<std::mutex> lock(mutex_);
    paths_ = paths;
    watches_.swap(watches);
  }
  if (watches) watches->Stop();
}

bool Settings::IsKey(const std::string& key) {
  static const Paths kAnywhere("");
  return !SettingFile(kAnywhere, key).empty();
}

std::optional<std::string> Settings::FileOf(const std::string& key) const {
  std::lock_guard<std::mutex> lock(mutex_);
  if (paths_ == nullptr) return std::nullopt;
  std::string file = SettingFile(*paths_, key).string();
  if (file.empty() || file.size() > kMaxPath) return std::nullopt;
  return file;
}

std::shared_ptr<SettingWatches> Settings::watches() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return watches_;
}

// Where the kernel tells of all changes, it tells of this process's own as well.
void Settings::TellUnlessWatched(const std::string& key) {
  const std::shared_ptr<SettingWatches> all = watches();
  if (all && all->complete()) return;
  events_.Notify([&key](Observer& observer) { observer.OnSettingChanged(key); });
}

bool Settings::Write(const std::string& key, int type, std::string_view value) {
  const std::optional<std::string> file = FileOf(key);
  if (!file) return false;
  const std::string bytes = BytesOf(type).append(value);
  if (!ReplaceSettingFile(*file, bytes, SettingPrefixOf(key)->kept)) return false;
  TellUnlessWatched(key);
  return true;
}

bool Settings::SetString(const std::string& key, const std::string& value) {
  return Write(key, VCONF_TYPE_STRING, value);
}

bool Settings::Set(const std::string& key, int type, const std::string& text) {
  const std::optional<std::string> value = ValueOf(type, text);
  return value && Write(key, type, *value);
}

std::optional<Setting> Settings::Find(const std::string& key) const {
  const std::optional<std::string> file = FileOf(key);
  const std::optional<Stored> stored = file ? ReadStored(*file) : std::nullopt;
  if (!stored) return std::nullopt;
  return Setting{key, stored->type, TextOf(*stored)};
}

std::optional<std::string> Settings::GetString(const std::string& key) const {
  const std::optional<std::string> file = FileOf(key);
  if (!file) return std::nullopt;
  std::optional<Stored> stored = ReadStored(*file);
  if (!stored || stored->type != VCONF_TYPE_STRING) return std::nullopt;
  return std::move(stored->bytes);
}

bool Settings::Exists(const std::string& key) const {
  const std::optional<std::string> file = FileOf(key);
  return file && ReadStored(*file).has_value();
}

bool Settings::Remove(const std::string& key) {
  const std::optional<std::string> file = FileOf(key);
  std::error_code error;
  if (!file || !fs::is_regular_file(*file, error)) return false;
  if (unlink(file->c_str()) != 0) return false;
  TellUnlessWatched(key);
  return true;
}

bool Settings::Watch(const std::string& key, Watcher watcher,
                     std::function<void(const std::string& key)> callback) {
  const std::shared_ptr<SettingWatches> watches = this->watches();
  return watches && Exists(key) && watches->Add(key, watcher, std::move(callback));
}

bool Settings::Unwatch(const std::string& key, Watcher watcher) {
  const std::shared_ptr<SettingWatches> watches = this->watches();
  return watches && watches->Remove(key, watcher);
}

std::vector<Setting> Settings::list() const {
  const Paths* const paths = [this] {
    std::lock_guard<std::mutex> lock(mutex_);
    return paths_;
  }();
  if (paths == nullptr) return {};
  std::vector<Setting> settings;
  for (const std::string& key : SettingKeys(*paths)) {
    std::optional<Setting> setting = Find(key);
    if (setting) settings.push_back(std::move(*setting));
  }
  std::sort(settings.begin(), settings.end(),
            [](const Setting& a, const Setting& b) { return a.key < b.key; });
  return settings;
}

}  // namespace tvset
