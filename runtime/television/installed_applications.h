// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "app/web_application.h"
#include "base/json_fields.h"
#include "tvset/applications.h"

namespace orvane::television {

// An application, with what the set has no use for.
struct InstalledApplication {
  tvset::Application application;
  std::optional<std::string> version;  // empty when its config.xml has none
};

template <class Map>
void MapFields(Map& map, InstalledApplication& installed) {
  map("id", installed.application.id);
  map("package", installed.application.package);
  map.Optional("name", installed.application.name);
  map.Optional("version", installed.version);
  map.Optional("folder", installed.application.folder);
  map.Optional("metadata", installed.application.metadata);
  map.Optional("privileges", installed.application.privileges);
}

InstalledApplication ToInstall(const app::WebApplication& loaded);

// Installs applications on the set, which it borrows, and keeps their versions. Any thread.
class InstalledApplications {
 public:
  explicit InstalledApplications(tvset::Applications& applications) : applications_(applications) {}

  void Install(const InstalledApplication& installed);  // throws as tvset::Applications::Install
  InstalledApplication WithVersion(const tvset::Application& application) const;

 private:
  tvset::Applications& applications_;
  mutable std::mutex mutex_;
  std::map<std::string, std::optional<std::string>> versions_;  // guarded by mutex_; by id
};

}  // namespace orvane::television
