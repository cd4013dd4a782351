// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/installed_applications.h"

#include <utility>

namespace orvane::television {

namespace {

std::pair<std::string, std::string> ReadPair(const Fields& fields, const picojson::value& row) {
  if (row.is<picojson::array>()) {
    const auto& pair = row.get<picojson::array>();
    if (pair.size() == 2 && pair[0].is<std::string>() && pair[1].is<std::string>()) {
      return {pair[0].get<std::string>(), pair[1].get<std::string>()};
    }
  }
  fields.Refuse("metadata", "an array of arrays, each of a key and a value");
}

}  // namespace

InstalledApplication ReadApplication(const Fields& fields) {
  InstalledApplication installed;
  installed.version = fields.Text("version", "");
  tvset::Application& application = installed.application;
  application.id = fields.Text("id");
  application.package = fields.Text("package");
  application.name = fields.Text("name", application.id);
  application.folder = fields.Text("folder", "");
  for (const picojson::value& row : fields.Array("metadata")) {
    application.metadata.push_back(ReadPair(fields, row));
  }
  for (const picojson::value& privilege : fields.Array("privileges")) {
    if (!privilege.is<std::string>()) fields.Refuse("privileges", "an array of strings");
    application.privileges.push_back(privilege.get<std::string>());
  }
  return installed;
}

picojson::object ToJson(const InstalledApplication& installed) {
  const tvset::Application& application = installed.application;
  picojson::array metadata;
  for (const auto& [key, value] : application.metadata) {
    metadata.emplace_back(picojson::array{picojson::value(key), picojson::value(value)});
  }
  picojson::array privileges;
  for (const std::string& privilege : application.privileges) privileges.emplace_back(privilege);
  picojson::object json{{"id", picojson::value(application.id)},
                        {"package", picojson::value(application.package)},
                        {"name", picojson::value(application.name)},
                        {"folder", picojson::value(application.folder.string())},
                        {"metadata", picojson::value(metadata)},
                        {"privileges", picojson::value(privileges)}};
  if (!installed.version.empty()) json["version"] = picojson::value(installed.version);
  return json;
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
  return {application, version == versions_.end() ? std::string() : version->second};
}

}  // namespace orvane::television
