// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace extension::orvane {

// The privilege named after the script object. Nothing in the library reads it, and no call is
// checked against it: the runtime decides which pages get the object. Each module that stands for
// the object carries a copy, made when the library is loaded.
const std::string kPrivilegeOrvane = "http://dravelt.example/privilege/orvane";  // NOLINT

}  // namespace extension::orvane
