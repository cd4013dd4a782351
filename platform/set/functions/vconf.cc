// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Settings. A watcher hears of the changes of all processes, its own among them, on one thread of
// the set, which stands for the main loop that a set's application would have.
#include <cstring>
#include <string>

#include <vconf.h>

#include "functions/platform_call.h"

struct _keynode_t {
  std::string key;
};

namespace tvset {
namespace {

// A callback is registered once for a key, so it is what tells watches of a key apart.
Settings::Watcher WatcherOf(vconf_callback_fn callback) {
  return reinterpret_cast<Settings::Watcher>(callback);
}

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
    if (in_key == nullptr || cb == nullptr) return VCONF_ERROR;
    const auto call = [cb, user_data](const std::string& key) {
      keynode_t node{key};
      cb(&node, user_data);
    };
    return set.settings().Watch(in_key, tvset::WatcherOf(cb), call) ? VCONF_OK : VCONF_ERROR;
  });
}

TVSET_EXPORT int vconf_ignore_key_changed(const char* in_key, vconf_callback_fn cb) {
  return tvset::PlatformCall("vconf_ignore_key_changed", VCONF_ERROR, [&](tvset::Set& set) -> int {
    if (in_key == nullptr || cb == nullptr) return VCONF_ERROR;
    return set.settings().Unwatch(in_key, tvset::WatcherOf(cb)) ? VCONF_OK : VCONF_ERROR;
  });
}
