// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tvset/features.h"

namespace tvset {

// What a profile says, before it is anybody's: FeatureStore takes it as a whole or not at all.
struct ProfileContent {
  // In the file's order; a later one replaces an earlier one.
  std::vector<Feature> features;
  // Entries that the platform passes over or reads as something else, one sentence each.
  std::vector<std::string> warnings;
};

// Reads a device profile in the platform's form: model-config, with the groups platform and custom
// in it, with one element per key in them. Not bounded: a profile is a person's own file. Throws
// SetError as FeatureStore::Load says.
ProfileContent ReadProfile(const std::filesystem::path& file);

// "bool", "int", "double" or "string".
bool IsFeatureType(std::string_view type);

}  // namespace tvset
