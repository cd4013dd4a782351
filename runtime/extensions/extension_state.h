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

namespace orvane::extensions {

class HostContext;

// What an extension said about itself while its XW_Initialize ran. Callbacks may be null.
struct Registration {
  std::string name;
  std::string api;
  std::vector<std::string> entry_points;
  std::vector<std::string> permissions;
  XW_CreatedInstanceCallback created = nullptr;
  XW_DestroyedInstanceCallback destroyed = nullptr;
  XW_ShutdownCallback shutdown = nullptr;
  XW_HandleMessageCallback handle_message = nullptr;
  XW_HandleBinaryMessageCallback handle_binary_message = nullptr;
  XW_HandleSyncMessageCallback handle_sync_message = nullptr;
};

// The host's side of one extension, found by its handle while it is alive: from before
// XW_Initialize until after the shutdown callback. Configure and the constant members are for any
// thread, the rest belongs to the extension thread.
class ExtensionState {
 public:
  ExtensionState(std::shared_ptr<HostContext> context, std::filesystem::path library);

  XW_Extension handle() const { return handle_; }
  HostContext& context() const { return *context_; }
  const std::filesystem::path& library() const { return library_; }

  // For people: extension "a.b", or the library's path while it has no name.
  std::string Describe() const;

  // Runs XW_Initialize. Throws HostError when the extension is not to be used.
  void Initialize(XW_Initialize_Func initialize);

  // `change` is applied to the registration while XW_Initialize runs. False, and nothing done,
  // otherwise.
  template <typename Change>
  bool Configure(Change&& change) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!initializing_) return false;
    change(registration_);
    return true;
  }

  // Final once Initialize returned.
  const Registration& registration() const { return registration_; }

  // Destroys the instances that are left, then calls the shutdown callback.
  void Shutdown();

 private:
  const XW_Extension handle_;
  const std::shared_ptr<HostContext> context_;
  const std::filesystem::path library_;
  mutable std::mutex mutex_;
  bool initializing_ = false;  // guarded by mutex_
  Registration registration_;  // guarded by mutex_ while initializing_, constant afterwards
};

}  // namespace orvane::extensions
