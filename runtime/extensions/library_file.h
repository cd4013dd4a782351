// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

namespace orvane::extensions {

// Refuses, with HostError, files that the dynamic loader would hang on or crash the process with:
// no regular file, no ELF file, a file that is shorter than its program headers say. Everything
// else is left to the loader.
void CheckLibraryFile(const std::filesystem::path& library);

}  // namespace orvane::extensions
