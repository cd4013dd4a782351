// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/registry.h"

#include <algorithm>
#include <limits>

#include "extensions/extension_state.h"
#include "extensions/host_error.h"
#include "extensions/instance_state.h"

namespace orvane::extensions {

Registry& Registry::Process() {
  // Never destroyed: threads of extensions may call until the process ends.
  static auto* const registry = new Registry;
  return *registry;
}

int32_t Registry::NewHandle() {
  std::lock_guard<std::mutex> lock(mutex_);
  if (last_handle_ == std::numeric_limits<int32_t>::max()) {
    throw HostError("All 2147483647 handles of this process have been given. Restart the runtime.");
  }
  return ++last_handle_;
}

void Registry::Add(std::shared_ptr<ExtensionState> extension) {
  std::lock_guard<std::mutex> lock(mutex_);
  const XW_Extension handle = extension->handle();
  extensions_.emplace(handle, std::move(extension));
}

void Registry::Add(std::shared_ptr<InstanceState> instance) {
  std::lock_guard<std::mutex> lock(mutex_);
  const XW_Instance handle = instance->handle();
  instances_.emplace(handle, std::move(instance));
}

// What is taken out is destroyed after the lock is let go: it may own the last of a host's options.
void Registry::RemoveExtension(XW_Extension handle) {
  decltype(extensions_)::node_type removed;
  std::lock_guard<std::mutex> lock(mutex_);
  removed = extensions_.extract(handle);
}

void Registry::RemoveInstance(XW_Instance handle) {
  decltype(instances_)::node_type removed;
  std::lock_guard<std::mutex> lock(mutex_);
  removed = instances_.extract(handle);
}

std::shared_ptr<ExtensionState> Registry::FindExtension(XW_Extension handle) const {
  std::lock_guard<std::mutex> lock(mutex_);
  const auto found = extensions_.find(handle);
  return found == extensions_.end() ? nullptr : found->second;
}

std::shared_ptr<InstanceState> Registry::FindInstance(XW_Instance handle) const {
  std::lock_guard<std::mutex> lock(mutex_);
  const auto found = instances_.find(handle);
  return found == instances_.end() ? nullptr : found->second;
}

std::vector<std::shared_ptr<InstanceState>> Registry::instances() const {
  std::vector<std::shared_ptr<InstanceState>> all;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    for (const auto& [handle, instance] : instances_) all.push_back(instance);
  }
  std::sort(all.begin(), all.end(),
            [](const auto& left, const auto& right) { return left->handle() < right->handle(); });
  return all;
}

void Registry::AddHost(std::shared_ptr<HostContext> host) {
  std::lock_guard<std::mutex> lock(mutex_);
  hosts_.push_back(std::move(host));
}

void Registry::RemoveHost(const HostContext* host) {
  std::shared_ptr<HostContext> removed;
  std::lock_guard<std::mutex> lock(mutex_);
  const auto found = std::find_if(hosts_.begin(), hosts_.end(),
                                  [host](const auto& known) { return known.get() == host; });
  if (found == hosts_.end()) return;
  removed = std::move(*found);
  hosts_.erase(found);
}

std::vector<std::shared_ptr<HostContext>> Registry::hosts() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return hosts_;
}

bool Registry::ClaimLibrary(const void* library) {
  std::lock_guard<std::mutex> lock(mutex_);
  return libraries_.insert(library).second;
}

void Registry::ReleaseLibrary(const void* library) {
  std::lock_guard<std::mutex> lock(mutex_);
  libraries_.erase(library);
}

}  // namespace orvane::extensions
