// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/catalogue.h"

#include <algorithm>
#include <utility>

#include "base/json.h"
#include "extensions/host_error.h"
#include "extensions/warnings.h"

namespace orvane::extensions {
namespace {

bool Claims(const CatalogueItem& item, const std::string& name) {
  const auto& others = item.entry_points;
  return item.name == name || std::find(others.begin(), others.end(), name) != others.end();
}

bool IsIdentifier(std::string_view part) {
  constexpr std::string_view kDigits = "0123456789";
  const bool known = std::all_of(part.begin(), part.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '$';
  });
  return known && !part.empty() && kDigits.find(part.front()) == std::string_view::npos;
}

}  // namespace

bool IsDottedName(std::string_view name) {
  for (size_t dot = name.find('.'); dot != std::string_view::npos; dot = name.find('.')) {
    if (!IsIdentifier(name.substr(0, dot))) return false;
    name.remove_prefix(dot + 1);
  }
  return IsIdentifier(name);
}

void Catalogue::Check(const char* kind, const std::string& name, const CatalogueItem& claimant) {
  const std::string what =
      std::string("The ") + kind + " " + base::JsonText(Excerpt(name)) + " of " + claimant.source;
  if (!IsDottedName(name)) {
    throw HostError(
        what +
        " is no dotted name. The library is not used; write identifiers joined by dots, "
        "such as \"maker.product\".");
  }
  const CatalogueItem* owner = Find(name);
  if (owner == nullptr || owner == &claimant) return;
  throw HostError(what + " is taken by " + owner->source +
                  ". The library is not used; remove one of the two, or give it another name.");
}

void Catalogue::Add(CatalogueItem item) {
  if (item.name.empty()) {
    throw HostError(
        item.source +
        " has no name. The library is not used; its XW_Initialize must call SetExtensionName.");
  }
  Check("name", item.name, item);
  AddEntryPoints(item, std::exchange(item.entry_points, {}));
  items_.push_back(std::move(item));
}

void Catalogue::AddEntryPoints(CatalogueItem& item, const std::vector<std::string>& entry_points) {
  for (const std::string& entry_point : entry_points) Check("entry point", entry_point, item);
  for (const std::string& entry_point : entry_points) {
    if (!Claims(item, entry_point)) item.entry_points.push_back(entry_point);
  }
}

void Catalogue::Remove(const CatalogueItem& item) {
  items_.remove_if([&item](const CatalogueItem& known) { return &known == &item; });
}

CatalogueItem* Catalogue::Find(const std::string& name) {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&name](const auto& item) { return Claims(item, name); });
  return found == items_.end() ? nullptr : &*found;
}

}  // namespace orvane::extensions
