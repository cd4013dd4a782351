// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tvset/features.h"

namespace tvset {

struct ProfileContent {
  std::vector<Feature> features;  // in the file's order; a later one replaces an earlier one
  std::vector<std::string> warnings;
};

// Reads a device profile in the platform's form: model-config, with the groups platform and custom
// in it, with one element per key in them. Throws SetError as FeatureStore::Load says.
ProfileContent ReadProfile(const std::filesystem::path& file);

bool IsFeatureType(std::string_view type);

}  // namespace tvset
