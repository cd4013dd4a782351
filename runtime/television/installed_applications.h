// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <mutex>
#include <string>

#include <picojson.h>

#include "television/fields.h"
#include "tvset/applications.h"

namespace orvane::television {

// An application, with what the set has no use for.
struct InstalledApplication {
  tvset::Application application;
  std::string version;  // empty when its config.xml has none
};

// {"id","package","name","version","folder","metadata":[[key,value]],"privileges":[…]}. Throws
// RequestError.
InstalledApplication ReadApplication(const Fields& fields);
picojson::object ToJson(const InstalledApplication& installed);

// Installs applications on the set, which it borrows, and keeps their versions. Any thread.
class InstalledApplications {
 public:
  explicit InstalledApplications(tvset::Applications& applications) : applications_(applications) {}

  void Install(const InstalledApplication& installed);  // throws as tvset::Applications::Install
  InstalledApplication WithVersion(const tvset::Application& application) const;

 private:
  tvset::Applications& applications_;
  mutable std::mutex mutex_;
  std::map<std::string, std::string> versions_;  // guarded by mutex_; by application id
};

}  // namespace orvane::television
