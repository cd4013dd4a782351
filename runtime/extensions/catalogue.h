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
  // Dotted: where the page finds what the script exports.
  std::string name;
  // Further dotted names, without duplicates, whose touch loads the library as well. First those of
  // the metadata, then those that the extension set for itself.
  std::vector<std::string> entry_points;
  std::filesystem::path library;
  // For people: what claims the names, a library or an entry of a metadata file.
  std::string source;
  // Borrowed from the ExtensionHost. Null until the library is loaded.
  Extension* extension = nullptr;
};

// The extensions of one host and the dotted names that each has claimed: a name belongs to one
// extension, whoever came first. Part of the ExtensionHost. Extension thread only.
class Catalogue {
 public:
  // Claims the item's names. Throws HostError, and claims none, when one is no dotted name or is
  // taken. The item stays where it is until it is removed.
  void Add(CatalogueItem item);

  // The same for further entry points of an item. One that it has already is no error.
  void AddEntryPoints(CatalogueItem& item, const std::vector<std::string>& entry_points);

  // Sets the item's names free, and destroys it.
  void Remove(const CatalogueItem& item);

  // By name or entry point; null if there is none.
  CatalogueItem* Find(const std::string& name);

  // Oldest first.
  std::list<CatalogueItem>& items() { return items_; }
  const std::list<CatalogueItem>& items() const { return items_; }

 private:
  // Throws HostError unless `claimant` may have the name. `kind` says in the text what it is.
  void Check(const char* kind, const std::string& name, const CatalogueItem& claimant);

  std::list<CatalogueItem> items_;
};

}  // namespace orvane::extensions
