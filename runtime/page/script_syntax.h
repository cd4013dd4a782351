// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace orvane::page {

// Why the text is no script, in the engine's words; empty when it is one. `name` is its file. It is
// taken as the body of a function, where a return may stand. Runs nothing of it. Any thread.
std::string SyntaxErrorOf(const std::string& script, const std::string& name);

}  // namespace orvane::page
