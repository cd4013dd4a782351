// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Feature keys, read from the set's store at each call. -22 also answers a key that is not there
// and one of another type; -5 a set that cannot be started.
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include <system_info.h>

#include "functions/platform_call.h"

namespace tvset {
namespace {

constexpr int kNone = SYSTEM_INFO_ERROR_NONE;
constexpr int kBadParameter = SYSTEM_INFO_ERROR_INVALID_PARAMETER;
constexpr int kPlatformFailed = SYSTEM_INFO_ERROR_IO_ERROR;

int CopyText(const std::string& text, char** value) {
  char* copy = strdup(text.c_str());
  if (copy == nullptr) return SYSTEM_INFO_ERROR_OUT_OF_MEMORY;
  *value = copy;
  return kNone;
}

bool IsDeviceId(const std::string& key) {
  return key == "tizen.org/system/tizenid" || key == "http://tizen.org/system/tizenid";
}

// The key that is a file of its own.
std::optional<std::string> DeviceId(Set& set) {
  std::ifstream file(set.paths().device_id_file());
  std::string id;
  if (!std::getline(file, id)) return std::nullopt;
  return id;
}

}  // namespace
}  // namespace tvset

using tvset::FeatureGroup;

TVSET_EXPORT int system_info_get_custom_int(const char* key, int* value) {
  return tvset::PlatformCall(
      "system_info_get_custom_int", tvset::kPlatformFailed, [&](tvset::Set& set) -> int {
        if (key == nullptr || value == nullptr) return tvset::kBadParameter;
        const auto feature = set.features().Find(key, "int", FeatureGroup::kCustom);
        if (!feature) return tvset::kBadParameter;
        *value = static_cast<int>(std::strtol(feature->c_str(), nullptr, 10));
        return tvset::kNone;
      });
}

TVSET_EXPORT int system_info_get_custom_bool(const char* key, bool* value) {
  return tvset::PlatformCall(
      "system_info_get_custom_bool", tvset::kPlatformFailed, [&](tvset::Set& set) -> int {
        if (key == nullptr || value == nullptr) return tvset::kBadParameter;
        const auto feature = set.features().Find(key, "bool", FeatureGroup::kCustom);
        if (!feature) return tvset::kBadParameter;
        *value = *feature == "true" || *feature == "TRUE";
        return tvset::kNone;
      });
}

TVSET_EXPORT int system_info_get_platform_string(const char* key, char** value) {
  return tvset::PlatformCall(
      "system_info_get_platform_string", tvset::kPlatformFailed, [&](tvset::Set& set) -> int {
        if (key == nullptr || value == nullptr) return tvset::kBadParameter;
        const auto feature = set.features().Find(key, "string", FeatureGroup::kPlatform);
        if (feature) return tvset::CopyText(*feature, value);
        if (!tvset::IsDeviceId(key)) return tvset::kBadParameter;
        const auto id = tvset::DeviceId(set);
        return id ? tvset::CopyText(*id, value) : tvset::kPlatformFailed;
      });
}
