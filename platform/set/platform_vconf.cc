// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Settings. A watcher hears of the changes that this process makes, on the thread that makes them,
// and of the value that is there by then; what another process writes is read, but not announced.
#include <algorithm>
#include <cstring>
#include <mutex>
#include <string>
#include <vector>

#include <vconf.h>

#include "platform_call.h"

struct _keynode_t {
  std::string key;
};

namespace tvset {
namespace {

struct Watch {
  std::string key;
  vconf_callback_fn callback;
  void* user_data;
};

// The watches of this process; they end with vconf_ignore_key_changed.
class Watches final : public Observer {
 public:
  static Watches& Instance() {
    static auto* const watches = new Watches();
    return *watches;
  }

  // False: there is one of that key and callback already.
  bool Add(const Watch& watch) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (FindLocked(watch.key, watch.callback) != watches_.end()) return false;
    if (watches_.empty()) Set::Instance().events().Add(this);
    watches_.push_back(watch);
    return true;
  }

  bool Remove(const std::string& key, vconf_callback_fn callback) {
    bool last = false;
    {
      std::lock_guard<std::mutex> lock(mutex_);
      const auto found = FindLocked(key, callback);
      if (found == watches_.end()) return false;
      watches_.erase(found);
      last = watches_.empty();
    }
    if (last) Set::Instance().events().Remove(this);
    return true;
  }

  void OnSettingChanged(const std::string& key) override {
    std::vector<Watch> concerned;
    {
      std::lock_guard<std::mutex> lock(mutex_);
      std::copy_if(watches_.begin(), watches_.end(), std::back_inserter(concerned),
                   [&key](const Watch& watch) { return watch.key == key; });
    }
    keynode_t node{key};
    for (const Watch& watch : concerned) watch.callback(&node, watch.user_data);
  }

 private:
  std::vector<Watch>::iterator FindLocked(const std::string& key, vconf_callback_fn callback) {
    return std::find_if(watches_.begin(), watches_.end(), [&](const Watch& watch) {
      return watch.key == key && watch.callback == callback;
    });
  }

  std::mutex mutex_;
  std::vector<Watch> watches_;  // guarded by mutex_
};

}  // namespace
}  // namespace tvset

TVSET_EXPORT int vconf_set_str(const char* in_key, const char* strval) {
  return tvset::PlatformCall("vconf_set_str", VCONF_ERROR, [&](tvset::Set& set) -> int {
    if (in_key == nullptr || strval == nullptr) return VCONF_ERROR;
    return set.settings().SetString(in_key, strval) ? VCONF_OK : VCONF_ERROR;
  });
}

TVSET_EXPORT char* vconf_get_str(const char* in_key) {
  return tvset::PlatformValue<char*>("vconf_get_str", nullptr, [&](tvset::Set& set) -> char* {
    if (in_key == nullptr) return nullptr;
    const std::optional<std::string> value = set.settings().GetString(in_key);
    return value ? strdup(value->c_str()) : nullptr;
  });
}

TVSET_EXPORT int vconf_notify_key_changed(const char* in_key, vconf_callback_fn cb,
                                          void* user_data) {
  return tvset::PlatformCall("vconf_notify_key_changed", VCONF_ERROR, [&](tvset::Set& set) -> int {
    if (in_key == nullptr || cb == nullptr || !set.settings().Exists(in_key)) return VCONF_ERROR;
    const bool added = tvset::Watches::Instance().Add({in_key, cb, user_data});
    return added ? VCONF_OK : VCONF_ERROR;
  });
}

TVSET_EXPORT int vconf_ignore_key_changed(const char* in_key, vconf_callback_fn cb) {
  return tvset::PlatformCall("vconf_ignore_key_changed", VCONF_ERROR, [&](tvset::Set&) -> int {
    if (in_key == nullptr || cb == nullptr) return VCONF_ERROR;
    return tvset::Watches::Instance().Remove(in_key, cb) ? VCONF_OK : VCONF_ERROR;
  });
}
