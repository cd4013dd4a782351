// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/near_names.h"

#include <algorithm>
#include <locale>
#include <map>
#include <numeric>
#include <utility>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/predicate.hpp>

namespace orvane::base {

namespace {

// How many letters have to be added, removed or changed to turn one text into the other.
size_t EditDistance(const std::string& a, const std::string& b) {
  std::vector<size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = std::exchange(row[0], i);
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t change = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, change});
    }
  }
  return row[b.size()];
}

}  // namespace

std::vector<std::string> NearNames(std::string_view wanted, const std::vector<std::string>& names,
                                   size_t count) {
  constexpr size_t kLongestName = 200;  // the work grows with the product of the lengths
  if (wanted.empty() || wanted.size() > kLongestName) return {};
  using boost::algorithm::to_lower_copy;
  const std::locale& ascii = std::locale::classic();
  const std::string lower = to_lower_copy(std::string(wanted), ascii);
  const size_t tolerance = 1 + wanted.size() / 4;
  std::multimap<size_t, std::string> near;
  for (const std::string& name : names) {
    const std::string candidate = to_lower_copy(name, ascii);
    const size_t distance = EditDistance(lower, candidate);
    const bool begins = lower.size() >= 3 && boost::algorithm::starts_with(candidate, lower);
    if (distance <= tolerance || begins) near.emplace(distance, name);
  }
  std::vector<std::string> result;
  for (const auto& [distance, name] : near) {
    if (result.size() < count) result.push_back(name);
  }
  return result;
}

std::string QuotedNames(const std::vector<std::string>& names, const char* last_word) {
  std::string text;
  for (size_t i = 0; i < names.size(); ++i) {
    if (i > 0) text += i + 1 == names.size() ? last_word : ", ";
    text.append("\"").append(names[i]).append("\"");
  }
  return text;
}

std::string DidYouMean(const std::vector<std::string>& names) {
  return names.empty() ? "" : " Did you mean " + QuotedNames(names, " or ") + "?";
}

}  // namespace orvane::base
