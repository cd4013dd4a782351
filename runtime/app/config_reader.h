// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

#include "app/web_application.h"

namespace orvane::app {

// Reads `folder`/config.xml. Elements are known by namespace and local name, so that any prefix
// will do. Throws AppError with every error of the file; what is only odd ends in `warnings`.
WebApplication ReadConfig(const std::filesystem::path& folder);

}  // namespace orvane::app
