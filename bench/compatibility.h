// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The programs of this folder are also built within older commits, to be measured against them
// (script/bench --against). What is named otherwise there is told apart here and nowhere else.

#if __has_include("extensions/extension_host.h")
#include "extensions/extension_host.h"
namespace bench {
namespace extensions = orvane::extensions;
}  // namespace bench
#else
#include "host/extension_host.h"
namespace bench {
namespace extensions = orvane::host;
}  // namespace bench
#endif
