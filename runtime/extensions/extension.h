// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "XW_Extension.h"
#include "XW_Extension_Message_2.h"
#include "XW_Extension_SyncMessage.h"
#include "extensions/instance.h"
#include "extensions/library.h"

namespace orvane::extensions {

class Extension;
class HostContext;

// What an extension said about itself while its XW_Initialize ran. Callbacks may be null.
struct Registration {
  std::string name;
  std::string api;  // script text, may be empty
  std::vector<std::string> entry_points;
  std::vector<std::string> permissions;  // tables, in the order they were registered
  XW_CreatedInstanceCallback created = nullptr;
  XW_DestroyedInstanceCallback destroyed = nullptr;
  XW_ShutdownCallback shutdown = nullptr;
  XW_HandleMessageCallback handle_message = nullptr;
  XW_HandleBinaryMessageCallback handle_binary_message = nullptr;
  XW_HandleSyncMessageCallback handle_sync_message = nullptr;
};

// The end of an extension for its ExtensionHost: destroys the instances that are left, calls the
// shutdown callback, unloads the library.
struct ExtensionEnd {
  void operator()(Extension* extension) const;
};
using LoadedExtension = std::unique_ptr<Extension, ExtensionEnd>;

// An extension whose library is loaded, found by its handle from before XW_Initialize until after
// the shutdown callback. It lives as long as its ExtensionHost; what is left of it then is kept by
// whoever still calls about it. Configure, Describe and what is fixed after construction are for
// any thread, the rest belongs to the extension thread.
class Extension : public std::enable_shared_from_this<Extension> {
 public:
  // Loads the library and runs its XW_Initialize. Throws HostError; the library is unloaded then.
  static LoadedExtension Load(std::shared_ptr<HostContext> context,
                              const std::filesystem::path& library);

  // For Load, which makes it known under its handle.
  Extension(std::shared_ptr<HostContext> context, std::filesystem::path path);
  Extension(const Extension&) = delete;
  Extension& operator=(const Extension&) = delete;

  XW_Extension handle() const { return handle_; }
  HostContext& context() const { return *context_; }
  const std::filesystem::path& path() const { return path_; }  // of the library, absolute

  // Final once Load returned; its ExtensionHost has checked the names.
  const Registration& registration() const { return registration_; }
  const std::string& name() const { return registration_.name; }
  const std::string& api() const { return registration_.api; }

  // For people: extension "a.b", or the library's path while it has no name.
  std::string Describe() const;

  // `change` is applied to the registration while XW_Initialize runs. False, and nothing done,
  // otherwise.
  template <typename Change>
  bool Configure(Change&& change) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!initializing_) return false;
    change(registration_);
    return true;
  }

  // `client` is borrowed, see InstanceClient; it may be called before this returns. Throws
  // HostError when the extension's `created` throws: there is no instance then, and `destroyed` is
  // not called.
  std::unique_ptr<Instance> CreateInstance(InstanceClient* client);

 private:
  friend struct ExtensionEnd;

  void Initialize();
  void set_initializing(bool initializing);
  void End();

  const std::shared_ptr<HostContext> context_;
  const std::filesystem::path path_;
  LoadedLibrary library_;
  const XW_Extension handle_;
  mutable std::mutex mutex_;
  bool initializing_ = false;  // guarded by mutex_
  Registration registration_;  // guarded by mutex_ while initializing_, constant afterwards
};

}  // namespace orvane::extensions
