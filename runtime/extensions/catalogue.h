// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <list>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::extensions {

class Extension;

// Whether `name` is one or more ASCII identifiers joined by dots, as "dravelt.orvane". An
// identifier begins with a letter, "_" or "$", digits may follow.
bool IsDottedName(std::string_view name);

// An extension that a page may touch.
struct CatalogueItem {
  std::string name;
  std::vector<std::string> entry_points;
  std::filesystem::path library;
  std::string source;  // for people: what claims the names, a library or a metadata file
  Extension* extension = nullptr;  // borrowed; null until the library is loaded
};

// The extensions of one host and the dotted names that each has claimed. Extension thread only.
class Catalogue {
 public:
  // Claims the item's names. Throws HostError, and claims none, when one is no dotted name or is
  // taken. The item stays where it is until it is removed.
  void Add(CatalogueItem item);

  // The same for further entry points of an item.
  void AddEntryPoints(CatalogueItem& item, const std::vector<std::string>& entry_points);

  // Sets the item's names free, and destroys it.
  void Remove(const CatalogueItem& item);

  // By name or entry point; null if there is none.
  CatalogueItem* Find(const std::string& name);

  // Oldest first.
  std::list<CatalogueItem>& items() { return items_; }
  const std::list<CatalogueItem>& items() const { return items_; }

 private:
  void Check(const char* kind, const std::string& name, const CatalogueItem& claimant);

  std::list<CatalogueItem> items_;
};

}  // namespace orvane::extensions
