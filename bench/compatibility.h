// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The programs of this folder are also built within older commits, to be measured against them
// (script/bench --against). What is named otherwise there is told apart here and nowhere else.

#if __has_include("extensions/extension_host.h")
#include "extensions/extension_host.h"
namespace bench::extensions {
using namespace orvane::extensions;  // NOLINT(google-build-using-namespace)
}
#else
#include "host/extension_host.h"
namespace bench::extensions {
using namespace orvane::host;  // NOLINT(google-build-using-namespace)
}
#endif
