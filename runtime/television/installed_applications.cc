// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/installed_applications.h"

namespace orvane::television {

InstalledApplication ToInstall(const app::WebApplication& loaded) {
  InstalledApplication installed;
  installed.application = {loaded.id,     loaded.package,  loaded.name,
                           loaded.folder, loaded.metadata, loaded.privileges};
  if (!loaded.version.empty()) installed.version = loaded.version;
  return installed;
}

void InstalledApplications::Install(const InstalledApplication& installed) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    versions_[installed.application.id] = installed.version;
  }
  applications_.Install(installed.application);
}

InstalledApplication InstalledApplications::WithVersion(
    const tvset::Application& application) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto version = versions_.find(application.id);
  return {application, version == versions_.end() ? std::nullopt : version->second};
}

}  // namespace orvane::television
