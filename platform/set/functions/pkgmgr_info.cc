// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The package database. A handle holds what was known of the application when it was asked for.
// Results: -2 for a NULL argument, a handle that is not alive and a key that the application does
// not declare; -3 for an unknown application; -1 for a set that cannot be started.
#include <strings.h>

#include <memory>
#include <utility>

#include <pkgmgr-info.h>

#include "functions/handles.h"
#include "functions/platform_call.h"

namespace tvset {

HandleTable<std::unique_ptr<Application>>& PackageHandles() {
  static auto* const table = new HandleTable<std::unique_ptr<Application>>(2);
  return *table;
}

namespace {

// The value stays in the application's own storage, which the handle keeps.
bool FindMetadata(Application& application, const char* wanted, char** found) {
  for (auto& [key, value] : application.metadata) {
    if (strcasecmp(key.c_str(), wanted) != 0) continue;
    *found = value.data();
    return true;
  }
  return false;
}

}  // namespace
}  // namespace tvset

using PackageValue = std::unique_ptr<tvset::Application>;

TVSET_EXPORT int pkgmgrinfo_appinfo_get_appinfo(const char* appid, pkgmgrinfo_appinfo_h* handle) {
  return tvset::PlatformCall(
      "pkgmgrinfo_appinfo_get_appinfo", PMINFO_R_ERROR, [&](tvset::Set& set) -> int {
        if (appid == nullptr || handle == nullptr) return PMINFO_R_EINVAL;
        std::optional<tvset::Application> application = set.applications().Find(appid);
        if (!application) return PMINFO_R_ENOENT;
        auto kept = std::make_unique<tvset::Application>(std::move(*application));
        *handle = tvset::PackageHandles().Add([&kept](PackageValue& value) {
          value = std::move(kept);
          return true;
        });
        return PMINFO_R_OK;
      });
}

TVSET_EXPORT int pkgmgrinfo_appinfo_get_metadata_value(pkgmgrinfo_appinfo_h handle,
                                                       const char* metadata_key,
                                                       char** metadata_value) {
  return tvset::PlatformCall(
      "pkgmgrinfo_appinfo_get_metadata_value", PMINFO_R_ERROR, [&](tvset::Set&) -> int {
        if (metadata_key == nullptr || metadata_value == nullptr) return PMINFO_R_EINVAL;
        const bool found = tvset::PackageHandles().Read(handle, [&](PackageValue& application) {
          return tvset::FindMetadata(*application, metadata_key, metadata_value);
        });
        return found ? PMINFO_R_OK : PMINFO_R_EINVAL;
      });
}

TVSET_EXPORT int pkgmgrinfo_appinfo_destroy_appinfo(pkgmgrinfo_appinfo_h handle) {
  return tvset::PlatformCall("pkgmgrinfo_appinfo_destroy_appinfo", PMINFO_R_ERROR,
                             [&](tvset::Set&) -> int {
                               // Freed at once, so that a value which is used after its handle
                               // shows in a memory checker.
                               const bool removed = tvset::PackageHandles().Remove(
                                   handle, [](PackageValue& application) { application.reset(); });
                               return removed ? PMINFO_R_OK : PMINFO_R_EINVAL;
                             });
}
