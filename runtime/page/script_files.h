// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The runtime's script files, as the build embeds them: ASCII, ended by a null byte. Usable from
// any thread.
extern "C" {
// A function expression of the page's host; makes the runtime's script side, see js/main.js.
extern const char kPageScript[];

// What an extension's script text is evaluated in, up to and from the place of the text; see
// js/extension_wrapper.js. The head has no line break.
extern const char kExtensionWrapperHead[];
extern const char kExtensionWrapperTail[];
}
