// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace orvane::page {

// Why the text is no script, with the line; empty when it is one. Runs nothing of it. Any thread.
std::string SyntaxErrorOf(const std::string& script, const std::string& name);

}  // namespace orvane::page
