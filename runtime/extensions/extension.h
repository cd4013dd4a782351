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

// What an extension said about itself while its XW_Initialize ran, as it said it: names are checked
// by the Catalogue. A later call of the same kind replaces an earlier one, but for permissions.
struct Registration {
  std::string name;
  // Script text that a page evaluates when it first touches the extension. May be empty.
  std::string api;
  std::vector<std::string> entry_points;
  // Tables as they were given, in the order they were registered. Kept, and not acted upon.
  std::vector<std::string> permissions;
  // Null: the extension does not want to be called.
  XW_CreatedInstanceCallback created = nullptr;
  XW_DestroyedInstanceCallback destroyed = nullptr;
  XW_ShutdownCallback shutdown = nullptr;
  XW_HandleMessageCallback handle_message = nullptr;
  XW_HandleBinaryMessageCallback handle_binary_message = nullptr;
  XW_HandleSyncMessageCallback handle_sync_message = nullptr;
};

// The end of an extension for its ExtensionHost: destroys the instances that are left, calls the
// shutdown callback, unloads the library. A library whose code is on the stack of the thread that
// ends it stays loaded, with a warning. The Extension itself goes with the last of its users.
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
  // Loads the library and runs its XW_Initialize. Throws HostError when the file is no library that
  // can be loaded, is in use, exports no XW_Initialize, or when that fails or throws; the library
  // is unloaded then, and its shutdown callback is not called. On the extension thread.
  static LoadedExtension Load(std::shared_ptr<HostContext> context,
                              const std::filesystem::path& library);

  // For Load, which makes it known under its handle. `path` is absolute. Throws as LoadLibrary.
  Extension(std::shared_ptr<HostContext> context, std::filesystem::path path);
  Extension(const Extension&) = delete;
  Extension& operator=(const Extension&) = delete;
  ~Extension() = default;

  // What the extension names itself with in calls of the C interface. Dead once it has ended.
  XW_Extension handle() const { return handle_; }
  HostContext& context() const { return *context_; }
  // Of the library, absolute.
  const std::filesystem::path& path() const { return path_; }

  // Final once Load returned, and therefore read without a lock; its ExtensionHost has checked the
  // names of those that it gives out.
  const Registration& registration() const { return registration_; }
  const std::string& name() const { return registration_.name; }
  const std::string& api() const { return registration_.api; }

  // For people: extension "a.b", or the library's path while it has no name.
  std::string Describe() const;

  // `change` is applied to the registration while XW_Initialize runs, on whatever thread of the
  // extension the call comes; it is called under a lock, so that it must not call out. False, and
  // nothing done, otherwise.
  template <typename Change>
  bool Configure(Change&& change) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!initializing_) return false;
    change(registration_);
    return true;
  }

  // Makes an instance for one page context and calls the extension's `created`. `client` is
  // borrowed, see InstanceClient; it may be called before this returns. Throws HostError when the
  // extension's `created` throws: there is no instance then, and `destroyed` is not called.
  std::unique_ptr<Instance> CreateInstance(InstanceClient* client);

 private:
  friend struct ExtensionEnd;

  // The second half of Load, once the handle is known: finds and runs XW_Initialize.
  void Initialize();
  void set_initializing(bool initializing);
  // See ExtensionEnd.
  void End();

  // Fixed after construction.
  const std::shared_ptr<HostContext> context_;
  const std::filesystem::path path_;
  const XW_Extension handle_;
  // Empty once the extension has ended.
  LoadedLibrary library_;

  mutable std::mutex mutex_;
  // Guarded by mutex_.
  bool initializing_ = false;
  // Guarded by mutex_ while initializing_, constant afterwards.
  Registration registration_;
};

}  // namespace orvane::extensions
