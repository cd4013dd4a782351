// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iterator>
#include <sstream>
#include <utility>

#include "tvset/keys.h"

namespace tvset {
namespace {

// The rows and kMandatoryKeys, the number of mandatory keys among them, are made of keys/keys.js.
struct Row {
  const char* name;
  int key_code;            // of the page's key event
  int x_key_code;          // hardware code
  const char* page_names;  // with a blank between
};

#include "remote_key_rows.inc"

constexpr std::pair<std::string_view, std::string_view> kHeldKeys[] = {
    {"XF86Back", "XF86Exit"},
    {"XF86AudioRewind", "XF86PreviousChapter"},
    {"XF86AudioNext", "XF86NextChapter"},
};

std::vector<std::string> Words(const char* text) {
  std::istringstream words(text);
  return {std::istream_iterator<std::string>(words), {}};
}

}  // namespace

const std::vector<RemoteKey>& RemoteKeys() {
  static const auto* const keys = [] {
    auto* made = new std::vector<RemoteKey>();
    made->reserve(std::size(kRows));
    for (const Row& row : kRows) {
      made->push_back({row.name, row.key_code, row.x_key_code, Words(row.page_names)});
    }
    return made;
  }();
  return *keys;
}

bool IsMandatoryKey(std::string_view name) {
  return std::any_of(kRows, kRows + kMandatoryKeys,
                     [name](const Row& row) { return row.name == name; });
}

std::string SymbolOfHeldKey(const std::string& name) {
  for (const auto& [key, held] : kHeldKeys) {
    if (key == name) return std::string(held);
  }
  return name;
}

}  // namespace tvset
