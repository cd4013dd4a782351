// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/extension_host.h"

#include <algorithm>
#include <exception>
#include <system_error>
#include <utility>

#include "base/json.h"
#include "extensions/host_context.h"
#include "extensions/metadata.h"
#include "extensions/registry.h"

namespace orvane::extensions {
namespace {

using Paths = std::vector<std::filesystem::path>;

bool IsMetadataFile(const std::filesystem::path& file) { return file.extension() == ".json"; }

bool IsLibrary(const std::filesystem::path& file) {
  const std::string name = file.filename().string();
  return file.extension() == ".so" && name.rfind("lib", 0) == 0;
}

// The regular files of the folder in order of their names. Throws
// std::filesystem::filesystem_error.
Paths ListFiles(const std::filesystem::path& folder) {
  Paths files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::error_code ignored;  // a link that leads nowhere is no file
    if (entry.is_regular_file(ignored)) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

bool IsSameFile(const std::filesystem::path& left, const std::filesystem::path& right) {
  std::error_code ignored;  // one of them does not exist
  return std::filesystem::equivalent(left, right, ignored);
}

bool IsAnyOf(const Paths& libraries, const std::filesystem::path& file) {
  return std::any_of(libraries.begin(), libraries.end(),
                     [&file](const auto& library) { return IsSameFile(library, file); });
}

// The item whose library this is, if it waits to be loaded. Null otherwise.
CatalogueItem* FindWaiting(Catalogue& catalogue, const std::filesystem::path& library) {
  for (CatalogueItem& item : catalogue.items()) {
    if (item.extension == nullptr && IsSameFile(item.library, library)) return &item;
  }
  return nullptr;
}

}  // namespace

ExtensionHost::ExtensionHost(HostOptions options)
    : context_(std::make_shared<HostContext>(std::move(options))) {
  Registry::Process().hosts().Add(context_.get(), context_);
}

ExtensionHost::~ExtensionHost() {
  if (context_->HasThread() && !context_->OnExtensionThread()) {
    context_->Warn(
        "The extension host ends on another thread than the extension thread, so shutdown "
        "callbacks run "
        "there. End it on the extension thread.");
  }
  while (!extensions_.empty()) extensions_.pop_back();
  Registry::Process().hosts().Remove(context_.get());
  context_->Close();
}

bool ExtensionHost::LoadFile(const std::filesystem::path& library, std::string* error) {
  context_->Enter("ExtensionHost::LoadFile");
  return Load(library, FindWaiting(catalogue_, library), error);
}

bool ExtensionHost::Load(const std::filesystem::path& library, CatalogueItem* waiting,
                         std::string* error) {
  try {
    extensions_.reserve(extensions_.size() + 1);
    LoadedExtension extension = Extension::Load(context_, library);
    Publish(*extension, waiting);
    extensions_.push_back(std::move(extension));
    return true;
  } catch (const std::exception& exception) {
    if (waiting != nullptr) catalogue_.Remove(*waiting);
    if (error == nullptr) {
      context_->Warn(exception.what());
    } else {
      *error = exception.what();
    }
    return false;
  }
}

void ExtensionHost::Publish(Extension& extension, CatalogueItem* waiting) {
  const std::vector<std::string>& entry_points = extension.registration().entry_points;
  if (waiting == nullptr) {
    return catalogue_.Add(
        {extension.name(), entry_points, extension.path(), extension.path().string(), &extension});
  }
  if (extension.name() != waiting->name) {
    throw HostError("The library " + waiting->library.string() + " names itself " +
                    base::JsonText(extension.name()) + ", but " + waiting->source + " names it " +
                    base::JsonText(waiting->name) +
                    ". The library is not used; correct the entry.");
  }
  catalogue_.AddEntryPoints(*waiting, entry_points);
  waiting->extension = &extension;
}

void ExtensionHost::LoadFolder(const std::filesystem::path& folder) {
  context_->Enter("ExtensionHost::LoadFolder");
  Paths files;
  try {
    files = ListFiles(std::filesystem::absolute(folder));
  } catch (const std::filesystem::filesystem_error& error) {
    context_->Warn("Cannot read the extension folder " + folder.string() + ": " +
                   error.code().message() + ". Check the path.");
    return;
  }
  Paths named_libraries;
  for (const auto& file : files) {
    if (IsMetadataFile(file)) ReadMetadata(file, &named_libraries);
  }
  for (const auto& file : files) {
    if (IsLibrary(file) && !IsAnyOf(named_libraries, file)) LoadFile(file);
  }
}

void ExtensionHost::ReadMetadata(const std::filesystem::path& file, Paths* named_libraries) {
  const Metadata metadata = ReadMetadataFile(file);
  for (const std::string& problem : metadata.problems) {
    context_->Warn("Metadata file " + file.string() + ": " + problem);
  }
  const std::filesystem::path folder = file.parent_path();
  for (const std::string& library : metadata.refused_libraries) {
    named_libraries->push_back(folder / library);
  }
  for (const MetadataEntry& entry : metadata.entries) {
    const std::filesystem::path library = folder / entry.library;
    const std::string source = "entry " + std::to_string(entry.number) + " of " + file.string();
    try {
      AddLazily({entry.name, entry.entry_points, library, source}, *named_libraries);
    } catch (const HostError& error) {
      context_->Warn(error.what());
    }
    named_libraries->push_back(library);
  }
}

void ExtensionHost::AddLazily(CatalogueItem item, const Paths& named_libraries) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(item.library, error)) {
    throw HostError("The library " + item.library.string() + " of " + item.source +
                    " does not exist. Install it, or take the entry out.");
  }
  if (IsAnyOf(named_libraries, item.library)) {
    throw HostError("The library " + item.library.string() + " of " + item.source +
                    " is named by an earlier entry, which counts. Take one of the two out.");
  }
  catalogue_.Add(std::move(item));
}

std::vector<CatalogueItem> ExtensionHost::catalogue() const {
  context_->Enter("ExtensionHost::catalogue");
  return {catalogue_.items().begin(), catalogue_.items().end()};
}

Extension* ExtensionHost::Find(const std::string& dotted_name) {
  context_->Enter("ExtensionHost::Find");
  CatalogueItem* item = catalogue_.Find(dotted_name);
  if (item == nullptr) return nullptr;
  if (item->extension != nullptr) return item->extension;
  return Load(item->library, item, nullptr) ? item->extension : nullptr;
}

}  // namespace orvane::extensions
