// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvane::base {

// The names that someone who typed `wanted` may have meant: those that differ from it in a few
// letters (upper and lower case count as the same) or that it is the beginning of, nearest first,
// at most `count`.
std::vector<std::string> NearNames(std::string_view wanted, const std::vector<std::string>& names,
                                   size_t count = 3);

// "a", "b" or "c" in quotes, for `last_word` " or ".
std::string QuotedNames(const std::vector<std::string>& names, const char* last_word);

// " Did you mean "a" or "b"?", or an empty text when `names` is empty: made to follow a full stop.
std::string DidYouMean(const std::vector<std::string>& names);

}  // namespace orvane::base
