// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/library.h"

#include <dlfcn.h>

#include <string>

#include "extensions/host_error.h"
#include "extensions/library_file.h"
#include "extensions/registry.h"

namespace orvane::extensions {

std::unique_ptr<Library> Library::Open(const std::filesystem::path& path) {
  CheckLibraryFile(path);
  // All symbols now: a missing one is an error here, not the end of the process in the middle of a
  // call.
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) {
    const char* reason = dlerror();
    throw HostError("Cannot load " + path.string() + ": " +
                    (reason != nullptr ? reason : "no reason given"));
  }
  if (!Registry::Process().ClaimLibrary(handle)) {
    dlclose(handle);
    throw HostError(
        "Cannot load " + path.string() +
        ": it is loaded already. Name the library once; another copy needs another file.");
  }
  return std::unique_ptr<Library>(new Library(handle));
}

Library::~Library() {
  if (handle_ == nullptr) return;
  Registry::Process().ReleaseLibrary(handle_);
  dlclose(handle_);
}

void* Library::Symbol(const char* name) const { return dlsym(handle_, name); }

void Library::KeepLoaded() { handle_ = nullptr; }

}  // namespace orvane::extensions
