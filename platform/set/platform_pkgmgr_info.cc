// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The package database. A handle holds what was known of the application when it was asked for.
// Results: -2 for a NULL argument, a handle that is not alive and a key that the application does
// not declare; -3 for an unknown application; -1 for a set that cannot be started.
#include <strings.h>

#include <pkgmgr-info.h>

#include "handles.h"
#include "platform_call.h"

namespace tvset {

HandleTable<Application>& PackageHandles() {
  static auto* const table = new HandleTable<Application>(2);
  return *table;
}

}  // namespace tvset

TVSET_EXPORT int pkgmgrinfo_appinfo_get_appinfo(const char* appid, pkgmgrinfo_appinfo_h* handle) {
  return tvset::PlatformCall(
      "pkgmgrinfo_appinfo_get_appinfo", PMINFO_R_ERROR, [&](tvset::Set& set) -> int {
        if (appid == nullptr || handle == nullptr) return PMINFO_R_EINVAL;
        std::optional<tvset::Application> application = set.applications().Find(appid);
        if (!application) return PMINFO_R_ENOENT;
        *handle = tvset::PackageHandles().Add(
            std::make_shared<tvset::Application>(std::move(*application)));
        return PMINFO_R_OK;
      });
}

TVSET_EXPORT int pkgmgrinfo_appinfo_get_metadata_value(pkgmgrinfo_appinfo_h handle,
                                                       const char* metadata_key,
                                                       char** metadata_value) {
  return tvset::PlatformCall("pkgmgrinfo_appinfo_get_metadata_value", PMINFO_R_ERROR,
                             [&](tvset::Set&) -> int {
                               if (metadata_key == nullptr || metadata_value == nullptr)
                                 return PMINFO_R_EINVAL;
                               const std::shared_ptr<tvset::Application> application =
                                   tvset::PackageHandles().Find(handle);
                               if (application == nullptr) return PMINFO_R_EINVAL;
                               for (auto& [key, value] : application->metadata) {
                                 if (strcasecmp(key.c_str(), metadata_key) != 0) continue;
                                 *metadata_value = value.data();
                                 return PMINFO_R_OK;
                               }
                               return PMINFO_R_EINVAL;
                             });
}

TVSET_EXPORT int pkgmgrinfo_appinfo_destroy_appinfo(pkgmgrinfo_appinfo_h handle) {
  return tvset::PlatformCall(
      "pkgmgrinfo_appinfo_destroy_appinfo", PMINFO_R_ERROR, [&](tvset::Set&) -> int {
        return tvset::PackageHandles().Remove(handle) ? PMINFO_R_OK : PMINFO_R_EINVAL;
      });
}
