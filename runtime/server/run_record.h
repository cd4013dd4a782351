// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <limits>
#include <string>

#include "base/json_fields.h"

namespace orvane::server {

// Where a running server is found, and by which secret it knows its own.
struct RunPlace {
  std::string url;  // for a person, with the secret
  std::string api;  // where methods are posted
  std::string token;
  std::string app_url;
  pid_t pid = 0;
};
template <class Map>
void MapFields(Map& map, RunPlace& place) {
  map.Optional("url", place.url);
  map("api", place.api);
  map("token", place.token);
  map.Optional("appUrl", place.app_url);
  map("pid", place.pid, base::Range{1, std::numeric_limits<pid_t>::max()});
}

// The file by which the command line finds the running server of a state folder:
// run/simulator.json, for its owner alone. It is there while this object is. A later server of the
// same folder takes it over.
class RunRecord {
 public:
  // Throws std::system_error when it cannot be written.
  RunRecord(const std::filesystem::path& state_folder, const RunPlace& place);
  ~RunRecord();
  RunRecord(const RunRecord&) = delete;
  RunRecord& operator=(const RunRecord&) = delete;

 private:
  const std::filesystem::path file_;
  const std::string json_;
};

}  // namespace orvane::server
