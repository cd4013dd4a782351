// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/device_keys.h"

#include <fstream>
#include <optional>
#include <string>
#include <utility>

#include <picojson.h>

#include "cli/exit_code.h"

namespace orvane::cli {

namespace {

[[noreturn]] void Refuse(const std::filesystem::path& file) {
  throw UsageError(file.string() +
                   ": the file of the device's keys is damaged. Build or install again.");
}

// Empty for a row that is none.
std::optional<tvset::RemoteKey> ReadRow(const picojson::value& row) {
  if (!row.is<picojson::object>()) return std::nullopt;
  const picojson::value& page_name = row.get("name");
  const picojson::value& name = row.get("keyName");
  const picojson::value& code = row.get("keyCode");
  if (!page_name.is<std::string>() || !name.is<std::string>() || !code.is<double>())
    return std::nullopt;
  return tvset::RemoteKey{name.get<std::string>(),
                          static_cast<int>(code.get<double>()),
                          0,
                          {page_name.get<std::string>()}};
}

}  // namespace

std::vector<tvset::RemoteKey> ReadDeviceKeys(const std::filesystem::path& file) {
  std::ifstream stream(file);
  picojson::value rows;
  const std::string error = picojson::parse(rows, stream);
  if (!error.empty() || !rows.is<picojson::array>()) Refuse(file);
  std::vector<tvset::RemoteKey> keys;
  for (const picojson::value& row : rows.get<picojson::array>()) {
    std::optional<tvset::RemoteKey> key = ReadRow(row);
    if (!key) Refuse(file);
    keys.push_back(*std::move(key));
  }
  return keys;
}

}  // namespace orvane::cli
