// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace extension::orvane {

// The privilege that guards the whole script object. The runtime checks it before a page gets the
// object; the library only carries it, one copy in each source that includes this, for tools that
// list what a library's modules need.
const std::string kPrivilegeOrvane = "http://dravelt.example/privilege/orvane";  // NOLINT

}  // namespace extension::orvane
