// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <vector>

#include "tvset/keys.h"

namespace orvane::cli {

// Reads the file of a device's own keys that the library was built with. Throws UsageError for a
// file that is damaged.
std::vector<tvset::RemoteKey> ReadDeviceKeys(const std::filesystem::path& file);

}  // namespace orvane::cli
