// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

namespace orvane::cli {

// Where the command finds what belongs to it: relative to its own executable, so that a build tree
// and an installation work alike wherever they lie.

// The library of this project: liborvane.so, or the folder laid out as on a set that it is
// installed in. Empty when there is none.
std::filesystem::path FindExtension();

// The keys of the device that this build is for, beyond those of every set. Empty when there is no
// such file.
std::filesystem::path FindDeviceKeys();

// The application that shows what the library does. Empty when it is not there.
std::filesystem::path FindTour();

}  // namespace orvane::cli
