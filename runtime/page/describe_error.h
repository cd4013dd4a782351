// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include <JavaScriptCore/JavaScript.h>

#include "page/script_error.h"

namespace orvane::page {

// Scripts that are not the page's own have names with these prefixes.
inline constexpr std::string_view kRuntimeScheme = "runtime:";
inline constexpr std::string_view kExtensionScheme = "extension:";

// What was thrown, as text and place. The place is the innermost frame of the page's own scripts,
// because an exception that an extension's script raises is about the page's call. `file` is used
// when what was thrown does not know its own. Runs no script of the page but getters and toString
// of what was thrown; whatever these throw is dropped.
ScriptError DescribeError(JSContextRef context, JSValueRef thrown, const std::string& file);

}  // namespace orvane::page
