// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include <JavaScriptCore/JavaScript.h>

namespace bench {

// Throws std::runtime_error with the script's error when `source` throws.
JSValueRef Evaluate(JSContextRef context, const std::string& source);

// Gives the context the function `native(text)`, which answers 44 bytes for a text of 88, and the
// object `loops` of js/loops.js.
void DefineLoops(JSContextRef context);

// Runs loops[name](count).
void RunLoop(JSContextRef context, const char* name, int64_t count);

}  // namespace bench
