// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/catalogue.h"

#include <algorithm>
#include <utility>

#include "base/json.h"
#include "extensions/dotted_name.h"
#include "extensions/host_error.h"
#include "extensions/warnings.h"

namespace orvane::extensions {
namespace {

bool Claims(const CatalogueItem& item, const std::string& name) {
  const auto& others = item.entry_points;
  return item.name == name || std::find(others.begin(), others.end(), name) != others.end();
}

}  // namespace

void Catalogue::Check(const char* kind, const std::string& name,
                      const CatalogueItem& claimant) const {
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
  for (const std::string& entry_point : item.entry_points) Check("entry point", entry_point, item);

  const std::vector<std::string> entry_points = std::exchange(item.entry_points, {});
  items_.push_back(std::make_unique<CatalogueItem>(std::move(item)));
  AddEntryPoints(*items_.back(), entry_points);
}

void Catalogue::AddEntryPoints(CatalogueItem& item, const std::vector<std::string>& entry_points) {
  for (const std::string& entry_point : entry_points) Check("entry point", entry_point, item);
  for (const std::string& entry_point : entry_points) {
    if (!Claims(item, entry_point)) item.entry_points.push_back(entry_point);
  }
}

void Catalogue::Remove(const CatalogueItem& item) {
  items_.erase(std::find_if(items_.begin(), items_.end(),
                            [&item](const auto& known) { return known.get() == &item; }));
}

CatalogueItem* Catalogue::Find(const std::string& name) const {
  for (const auto& item : items_) {
    if (Claims(*item, name)) return item.get();
  }
  return nullptr;
}

}  // namespace orvane::extensions
