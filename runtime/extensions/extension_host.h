// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "extensions/catalogue.h"
#include "extensions/extension.h"
#include "extensions/host_error.h"
#include "extensions/host_options.h"

namespace orvane::extensions {

// Hosts extensions of the C interface for the pages of one application. Owned by whoever owns the
// pages; owns its extensions. Instances are destroyed before it (those that are left are destroyed
// by it, and their Instance objects do nothing from then on).
//
// The first thread that calls a member after the constructor is the extension thread: all callbacks
// of extensions run on it, and a call from another thread throws HostError. Extensions themselves
// may call the C interface from any thread.
//
// A library that fails to load, that misbehaves or that claims a name wrongly gets a warning which
// says what to do; it is not loaded and takes nothing with it.
class ExtensionHost {
 public:
  explicit ExtensionHost(HostOptions options);
  // Shutdown callbacks run in reverse order of loading, each before its library is unloaded. When
  // it returns, nothing of HostOptions is called any more.
  ~ExtensionHost();

  ExtensionHost(const ExtensionHost&) = delete;
  ExtensionHost& operator=(const ExtensionHost&) = delete;

  // Loads the library now. False when it is not used; the reason goes to `error`, or to
  // HostOptions::warn when `error` is null. A library is loaded once in a process.
  bool LoadFile(const std::filesystem::path& library, std::string* error = nullptr);

  // Reads a folder as a set lays it out. A library that one of its *.json metadata files names is
  // loaded when its name or an entry point is first looked for, or not at all if its metadata is
  // wrong; the other lib*.so are loaded now, in order of their names.
  void LoadFolder(const std::filesystem::path& folder);

  // What a page may touch, in the order in which it was found. Libraries that failed to load are
  // not in it.
  std::vector<CatalogueItem> catalogue() const;

  // By name or entry point; loads the library if it waits for that. Null when there is none or it
  // failed to load.
  Extension* Find(const std::string& dotted_name);

 private:
  // Adds what the file names to the catalogue, warns of what is wrong, and appends every library
  // that it names, so that none of them counts as one without metadata.
  void ReadMetadata(const std::filesystem::path& file,
                    std::vector<std::filesystem::path>* named_libraries);
  // Throws HostError for a library that is missing or named before, and as Catalogue::Add.
  void AddLazily(CatalogueItem item, const std::vector<std::filesystem::path>& named_libraries);
  // `waiting` is the item that is loaded late, or null; it is removed when that fails.
  bool Load(const std::filesystem::path& library, CatalogueItem* waiting, std::string* error);
  // Claims the names of an extension that has just been loaded. Throws HostError.
  void Publish(Extension& extension, CatalogueItem* waiting);

  std::shared_ptr<HostContext> context_;
  Catalogue catalogue_;
  // In order of loading.
  std::vector<LoadedExtension> extensions_;
};

}  // namespace orvane::extensions
