// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "XW_Extension.h"
#include "extensions/instance.h"

namespace orvane::extensions {

class ExtensionState;
class HostContext;
class Library;

// An extension whose library is loaded and initialised. Owned by the ExtensionHost; lives as long
// as it does. Belongs to the extension thread.
class Extension {
 public:
  // For the ExtensionHost. Loads the library and runs its XW_Initialize. Throws HostError; the
  // library is unloaded then.
  static std::unique_ptr<Extension> Load(std::shared_ptr<HostContext> context,
                                         const std::filesystem::path& library);

  // Destroys the instances that are left, calls the shutdown callback, unloads the library.
  ~Extension();

  Extension(const Extension&) = delete;
  Extension& operator=(const Extension&) = delete;

  // As set by the extension; its ExtensionHost has checked the names.
  const std::string& name() const;
  const std::string& api() const;  // script text, may be empty
  const std::vector<std::string>& entry_points() const;
  const std::vector<std::string>& permissions() const;  // tables, in the order they were registered

  const std::filesystem::path& path() const;  // of the library, absolute
  XW_Extension handle() const;

  // `client` is borrowed, see InstanceClient; it may be called before this returns. Throws
  // HostError when the extension's `created` throws: there is no instance then, and `destroyed` is
  // not called.
  std::unique_ptr<Instance> CreateInstance(InstanceClient* client);

 private:
  Extension(std::unique_ptr<Library> library, std::shared_ptr<ExtensionState> state);

  std::unique_ptr<Library> library_;  // outlives the state's callbacks
  std::shared_ptr<ExtensionState> state_;
};

}  // namespace orvane::extensions
