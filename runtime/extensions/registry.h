// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "XW_Extension.h"

namespace orvane::extensions {

class ExtensionState;
class HostContext;
class InstanceState;

// Every living handle of the process. The C interface carries no context but a handle, so there is
// one registry for all hosts. Extensions and instances share one sequence of numbers, none is given
// twice: a handle that was mixed up or kept too long finds nothing. Thread-safe; what it returns is
// kept alive by the returned pointer.
class Registry {
 public:
  static Registry& Process();

  // Throws HostError when every number has been given.
  int32_t NewHandle();

  void Add(std::shared_ptr<ExtensionState> extension);
  void Add(std::shared_ptr<InstanceState> instance);
  void RemoveExtension(XW_Extension handle);
  void RemoveInstance(XW_Instance handle);
  std::shared_ptr<ExtensionState> FindExtension(XW_Extension handle) const;
  std::shared_ptr<InstanceState> FindInstance(XW_Instance handle) const;
  std::vector<std::shared_ptr<InstanceState>> instances() const;  // in order of creation

  // Hosts hear of calls that cannot be tied to one of them.
  void AddHost(std::shared_ptr<HostContext> host);
  void RemoveHost(const HostContext* host);
  std::vector<std::shared_ptr<HostContext>> hosts() const;

  // A library has one set of globals, so it serves one host at a time. False: it is claimed
  // already.
  bool ClaimLibrary(const void* library);
  void ReleaseLibrary(const void* library);

 private:
  mutable std::mutex mutex_;  // guards everything below
  int32_t last_handle_ = 0;
  std::unordered_map<XW_Extension, std::shared_ptr<ExtensionState>> extensions_;
  std::unordered_map<XW_Instance, std::shared_ptr<InstanceState>> instances_;
  std::vector<std::shared_ptr<HostContext>> hosts_;
  std::unordered_set<const void*> libraries_;
};

}  // namespace orvane::extensions
