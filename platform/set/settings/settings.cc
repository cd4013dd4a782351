// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/settings.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include <vconf.h>

#include "file_text.h"
#include "settings/setting_watches.h"
#include "tvset/paths.h"

namespace fs = std::filesystem;

namespace tvset {
namespace {

constexpr size_t kMaxPath = 1023;              // bytes of a file's full path
constexpr std::string_view kTemporary = ".~";  // begins the names of files being written

struct Prefix {
  std::string_view text;
  bool kept;  // over restarts
};
constexpr std::array<Prefix, 3> kPrefixes{
    {{VCONF_PREFIX_DB, true}, {VCONF_PREFIX_FILE, true}, {VCONF_PREFIX_MEMORY, false}}};

const Prefix* PrefixOf(std::string_view key) {
  for (const Prefix& prefix : kPrefixes) {
    if (key.substr(0, prefix.text.size()) == prefix.text) return &prefix;
  }
  return nullptr;
}

fs::path FolderOf(const Paths& paths, const Prefix& prefix) {
  if (!prefix.kept) return paths.memory_settings();
  return paths.settings() / prefix.text.substr(0, prefix.text.size() - 1);
}

// A key's part after its prefix: names a file below the prefix's folder and nothing outside it.
bool IsPlainPath(std::string_view rest) {
  if (rest.empty() || rest.find('\0') != std::string_view::npos) return false;
  while (true) {
    const size_t slash = rest.find('/');
    const std::string_view name = rest.substr(0, slash);
    if (name.empty() || name == "." || name == "..") return false;
    if (name.substr(0, kTemporary.size()) == kTemporary) return false;
    if (slash == std::string_view::npos) return true;
    rest.remove_prefix(slash + 1);
  }
}

class File {
 public:
  explicit File(int descriptor) : descriptor_(descriptor) {}
  ~File() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  bool open() const { return descriptor_ >= 0; }

  bool Write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
      bytes.remove_prefix(static_cast<size_t>(written));
    }
    return true;
  }

  bool Sync() { return fdatasync(descriptor_) == 0; }

 private:
  const int descriptor_;
};

// Beside the file it becomes, so that the rename stays within one file system.
std::string TemporaryFor(const std::string& file) {
  static std::atomic<unsigned> counter{0};
  const fs::path path(file);
  const std::string name = std::string(kTemporary) + std::to_string(getpid()) + "." +
                           std::to_string(counter.fetch_add(1));
  return (path.parent_path() / name).string();
}

bool WriteNewFile(const std::string& file, std::string_view bytes, bool kept) {
  File out(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0664));
  return out.open() && out.Write(bytes) && (!kept || out.Sync());
}

// One attempt; errno says why it failed.
bool TryToReplace(const std::string& file, std::string_view bytes, bool kept) {
  std::error_code error;
  fs::create_directories(fs::path(file).parent_path(), error);
  const std::string temporary = TemporaryFor(file);
  errno = 0;
  if (WriteNewFile(temporary, bytes, kept) && rename(temporary.c_str(), file.c_str()) == 0) {
    return true;
  }
  const int reason = errno;
  // A file of that name that was there before is somebody else's.
  if (reason != EEXIST) unlink(temporary.c_str());
  errno = reason;
  return false;
}

// Tries again where the next attempt may do better: the folder went while the file was written, or
// a process of the same id that crashed left a file of the same name.
bool ReplaceFile(const std::string& file, std::string_view bytes, bool kept) {
  constexpr int kAttempts = 5;
  for (int i = 0; i < kAttempts; ++i) {
    if (TryToReplace(file, bytes, kept)) return true;
    if (errno != ENOENT && errno != EEXIST) return false;
  }
  return false;
}

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

Settings::Settings(EventHub& events)
    : events_(events), watches_(std::make_shared<SettingWatches>()) {}

Settings::Settings(EventHub& events, const Paths& paths)
    : events_(events), watches_(std::make_shared<SettingWatches>()), paths_(&paths) {}

Settings::~Settings() { watches_->Clear(); }

void Settings::Reset(const Paths* paths) {
  watches_->Clear();
  std::lock_guard<std::mutex> lock(mutex_);
  paths_ = paths;
}

bool Settings::IsKey(const std::string& key) {
  const Prefix* prefix = PrefixOf(key);
  return prefix != nullptr && IsPlainPath(key.substr(prefix->text.size()));
}

std::optional<std::string> Settings::FileOf(const std::string& key) const {
  const Prefix* prefix = PrefixOf(key);
  if (prefix == nullptr) return std::nullopt;
  const std::string rest = key.substr(prefix->text.size());
  if (!IsPlainPath(rest)) return std::nullopt;
  std::lock_guard<std::mutex> lock(mutex_);
  if (paths_ == nullptr) return std::nullopt;
  std::string file = (FolderOf(*paths_, *prefix) / rest).string();
  if (file.size() > kMaxPath) return std::nullopt;
  return file;
}

bool Settings::Write(const std::string& key, int type, std::string_view value) {
  const std::optional<std::string> file = FileOf(key);
  if (!file) return false;
  const std::string bytes = BytesOf(type).append(value);
  if (!ReplaceFile(*file, bytes, PrefixOf(key)->kept)) return false;
  events_.Notify([&key](Observer& observer) { observer.OnSettingChanged(key); });
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
  events_.Notify([&key](Observer& observer) { observer.OnSettingChanged(key); });
  return true;
}

bool Settings::Watch(const std::string& key, Watcher watcher,
                     std::function<void(const std::string& key)> callback) {
  const std::optional<std::string> file = FileOf(key);
  if (!file || !Exists(key)) return false;
  return watches_->Add(*file, watcher, [key, callback = std::move(callback)] { callback(key); });
}

bool Settings::Unwatch(const std::string& key, Watcher watcher) {
  const std::optional<std::string> file = FileOf(key);
  return file && watches_->Remove(*file, watcher);
}

std::vector<Setting> Settings::list() const {
  std::vector<std::pair<std::string, fs::path>> folders;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (paths_ == nullptr) return {};
    for (const Prefix& prefix : kPrefixes) {
      folders.emplace_back(prefix.text, FolderOf(*paths_, prefix));
    }
  }
  std::vector<Setting> settings;
  for (const auto& [prefix, folder] : folders) {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder, error)) {
      const std::string rest = entry.path().lexically_relative(folder).string();
      if (!IsPlainPath(rest)) continue;
      const std::optional<Stored> stored = ReadStored(entry.path().string());
      if (stored) settings.push_back(Setting{prefix + rest, stored->type, TextOf(*stored)});
    }
  }
  std::sort(settings.begin(), settings.end(),
            [](const Setting& a, const Setting& b) { return a.key < b.key; });
  return settings;
}

}  // namespace tvset
