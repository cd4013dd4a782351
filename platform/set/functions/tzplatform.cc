// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Where the platform keeps things. The home of the set's user is the state folder itself, so that
// the folder of the installed applications (variable 61) lies directly in it. Folders that nothing
// here uses have a path too, but are not made.
#include <cstring>
#include <iterator>
#include <mutex>
#include <set>
#include <string>

#include <tzplatform_config.h>

#include "functions/platform_call.h"

namespace tvset {
namespace {

struct Variable {
  const char* name;
  // "@" stands for the state folder; "=" comes before the feature key that has the value.
  const char* value;
};

constexpr Variable kVariables[] = {
    {"TZ_BUILD_ARCH", "=tizen.org/system/build.arch"},
    {"TZ_BUILD_DATE", "=tizen.org/system/build.date"},
    {"TZ_BUILD_ID", "=tizen.org/system/build.id"},
    {"TZ_BUILD_RELEASE", "=tizen.org/system/build.release"},
    {"TZ_BUILD_TIME", "=tizen.org/system/build.time"},
    {"TZ_BUILD_TYPE", "=tizen.org/system/build.type"},
    {"TZ_BUILD_VARIANT", "=tizen.org/system/build.variant"},
    {"TZ_SYS_BIN", "/usr/bin"},
    {"TZ_SYS_CONFIG", "@/kdb"},
    {"TZ_SYS_CRASH", "@/crash"},
    {"TZ_SYS_DATA", "@/share"},
    {"TZ_SYS_DB", "@/dbspace"},
    {"TZ_SYS_DEFAULT_USER", "owner"},
    {"TZ_SYS_DEVEL", "@/devel"},
    {"TZ_SYS_DUMP", "@/dump"},
    {"TZ_SYS_ETC", "@/etc"},
    {"TZ_SYS_GLOBALUSER_NAME", "tizenglobalapp"},
    {"TZ_SYS_HOME", "@"},
    {"TZ_SYS_LIB", "/usr/lib"},
    {"TZ_SYS_LIBEXEC", "/usr/libexec"},
    {"TZ_SYS_LOG", "@/log"},
    {"TZ_SYS_MEDIA", "@/media"},
    {"TZ_SYS_OPT", "@/opt"},
    {"TZ_SYS_PRIVILEGES", "@/privileges"},
    {"TZ_SYS_RO_APP", "@/apps_ro"},
    {"TZ_SYS_RO_CONTAINER", "@/container_ro"},
    {"TZ_SYS_RO_DESKTOP_APP", "@/applications_ro"},
    {"TZ_SYS_RO_ETC", "@/etc"},
    {"TZ_SYS_RO_ICONS", "@/icons_ro"},
    {"TZ_SYS_RO_PACKAGES", "@/packages_ro"},
    {"TZ_SYS_RO_SHARE", "/usr/share"},
    {"TZ_SYS_RO_UG", "@/ug_ro"},
    {"TZ_SYS_RO_WRT", "@/wrt_ro"},
    {"TZ_SYS_RUN", "@/run"},
    {"TZ_SYS_RW_APP", "@/apps_rw"},
    {"TZ_SYS_RW_CACHE", "@/cache"},
    {"TZ_SYS_RW_CONTAINER", "@/container"},
    {"TZ_SYS_RW_DATA", "@/data"},
    {"TZ_SYS_RW_DESKTOP_APP", "@/applications"},
    {"TZ_SYS_RW_ETC", "@/etc"},
    {"TZ_SYS_RW_GLOBAL_APP", "@/apps_rw"},
    {"TZ_SYS_RW_ICONS", "@/icons"},
    {"TZ_SYS_RW_KEYS", "@/keys"},
    {"TZ_SYS_RW_LOG", "@/log"},
    {"TZ_SYS_RW_PACKAGES", "@/packages"},
    {"TZ_SYS_RW_SHARE", "@/share"},
    {"TZ_SYS_RW_SYSTEM", "@/system"},
    {"TZ_SYS_RW_UPDATE", "@/update"},
    {"TZ_SYS_RW_WRT", "@/wrt"},
    {"TZ_SYS_SBIN", "/usr/sbin"},
    {"TZ_SYS_SECURITY", "@/security"},
    {"TZ_SYS_SHARE", "@/share"},
    {"TZ_SYS_SMACK", "@/smack"},
    {"TZ_SYS_STORAGE", "@/storage"},
    {"TZ_SYS_TMP", "@/tmp"},
    {"TZ_SYS_UPGRADE", "@/upgrade"},
    {"TZ_SYS_USB", "@/storage/usb"},
    {"TZ_SYS_USER_GROUP", "users"},
    {"TZ_SYS_VAR", "@/var"},
    {"TZ_SYS_VCONF", "@/kdb"},
    {"TZ_SYS_ZONE", "@/zone"},
    {"TZ_USER_APP", "@/apps_rw"},
    {"TZ_USER_CACHE", "@/.cache"},
    {"TZ_USER_CONFIG", "@/.config"},
    {"TZ_USER_CONTENT", "@/media"},
    {"TZ_USER_DATA", "@/data"},
    {"TZ_USER_DB", "@/dbspace"},
    {"TZ_USER_DOCUMENTS", "@/media/Documents"},
    {"TZ_USER_DOWNLOADS", "@/media/Downloads"},
    {"TZ_USER_ETC", "@/etc"},
    {"TZ_USER_HOME", "@"},
    {"TZ_USER_ICONS", "@/icons"},
    {"TZ_USER_IMAGES", "@/media/Images"},
    {"TZ_USER_LIVE", "@/live"},
    {"TZ_USER_MUSIC", "@/media/Music"},
    {"TZ_USER_NAME", "owner"},
    {"TZ_USER_PACKAGES", "@/packages"},
    {"TZ_USER_SHARE", "@/share"},
    {"TZ_USER_UG", "@/ug"},
    {"TZ_USER_VIDEOS", "@/media/Videos"},
};
static_assert(std::size(kVariables) == _TZPLATFORM_VARIABLES_COUNT_);

constexpr bool SameText(const char* a, const char* b) {
  for (; *a == *b; ++a, ++b) {
    if (*a == '\0') return true;
  }
  return false;
}

static_assert(TZ_USER_APP == 61,
              "components of this image know the application root by its number");
static_assert(SameText(kVariables[TZ_USER_APP].name, "TZ_USER_APP"));
static_assert(SameText(kVariables[TZ_USER_VIDEOS].name, "TZ_USER_VIDEOS"));

bool IsVariable(int id) { return id >= 0 && id < _TZPLATFORM_VARIABLES_COUNT_; }

// A copy that lives as long as the process.
const char* Intern(const std::string& text) {
  static std::mutex mutex;
  static auto* const texts = new std::set<std::string>();
  std::lock_guard<std::mutex> lock(mutex);
  return texts->insert(text).first->c_str();
}

std::string ValueOf(Set& set, const Variable& variable) {
  std::string value = variable.value;
  if (value[0] == '@') return set.paths().state_folder().string() + value.substr(1);
  if (value[0] != '=') return value;
  return set.features().Find(value.substr(1), "string", FeatureGroup::kPlatform).value_or("");
}

}  // namespace
}  // namespace tvset

TVSET_EXPORT const char* tzplatform_getenv(enum tzplatform_variable id) {
  return tvset::PlatformValue<const char*>(
      "tzplatform_getenv", nullptr, [id](tvset::Set& set) -> const char* {
        if (!tvset::IsVariable(id)) return nullptr;
        return tvset::Intern(tvset::ValueOf(set, tvset::kVariables[id]));
      });
}

TVSET_EXPORT enum tzplatform_variable tzplatform_getid(const char* name) {
  return tvset::PlatformValue("tzplatform_getid", _TZPLATFORM_VARIABLES_INVALID_,
                              [name](tvset::Set&) {
                                if (name == nullptr) return _TZPLATFORM_VARIABLES_INVALID_;
                                for (int id = 0; id < _TZPLATFORM_VARIABLES_COUNT_; ++id) {
                                  if (std::strcmp(tvset::kVariables[id].name, name) == 0) {
                                    return static_cast<tzplatform_variable>(id);
                                  }
                                }
                                return _TZPLATFORM_VARIABLES_INVALID_;
                              });
}

TVSET_EXPORT const char* tzplatform_getname(enum tzplatform_variable id) {
  return tvset::PlatformValue<const char*>(
      "tzplatform_getname", nullptr, [id](tvset::Set&) -> const char* {
        return tvset::IsVariable(id) ? tvset::kVariables[id].name : nullptr;
      });
}
