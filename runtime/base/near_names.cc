// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/near_names.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace orvane::base {

namespace {

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return lower;
}

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
  const std::string lower = Lower(wanted);
  const size_t tolerance = 1 + wanted.size() / 4;
  std::vector<std::pair<size_t, std::string>> near;
  for (const std::string& name : names) {
    const std::string candidate = Lower(name);
    const size_t distance = EditDistance(lower, candidate);
    const bool begins = lower.size() >= 3 && candidate.compare(0, lower.size(), lower) == 0;
    if (distance <= tolerance || begins) near.emplace_back(distance, name);
  }
  std::stable_sort(near.begin(), near.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  if (near.size() > count) near.resize(count);
  std::vector<std::string> result;
  result.reserve(near.size());
  for (auto& entry : near) result.push_back(std::move(entry.second));
  return result;
}

std::string DidYouMean(const std::vector<std::string>& names) {
  if (names.empty()) return {};
  std::string text = " Did you mean ";
  for (size_t i = 0; i < names.size(); ++i) {
    if (i > 0) text += i + 1 == names.size() ? " or " : ", ";
    text += "\"" + names[i] + "\"";
  }
  return text + "?";
}

}  // namespace orvane::base
