// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/registry.h"

#include <limits>

#include "extensions/host_error.h"

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

}  // namespace orvane::extensions
