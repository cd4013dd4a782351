// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace orvane::page {

// The runtime's script files, as the build embeds them. The text ends with a NUL that the view does
// not count.

// The files of js/ in one: a function that takes the bridge. See js/main.js.
std::string_view PageScript();

// What an extension's script text is evaluated in, up to and from the place of the text. See
// js/extension_wrapper.js.
std::string_view ExtensionWrapperHead();
std::string_view ExtensionWrapperTail();

}  // namespace orvane::page
