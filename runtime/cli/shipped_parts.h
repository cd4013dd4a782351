// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "television/television_options.h"

namespace orvane::cli {

// What belongs to the command lies relative to its own executable, so that a build tree and an
// installation work alike wherever they lie.

// The library of this project, which is liborvane.so or the folder laid out as on a set that it is
// installed in, and the keys of the device that this build is for. What is not there is empty.
// Throws CommandError for a file of keys that is damaged.
television::ShippedParts FindShippedParts();

// The command that starts this one as a set process, but for the descriptors that it is given.
std::vector<std::string> SetProcessCommand();

// The application that shows what the library does. Empty when it is not there.
std::filesystem::path FindTour();

}  // namespace orvane::cli
