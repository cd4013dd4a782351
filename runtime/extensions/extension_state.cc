// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/extension_state.h"

#include <optional>
#include <utility>

#include "base/json.h"
#include "extensions/callback_frame.h"
#include "extensions/host_context.h"
#include "extensions/host_error.h"
#include "extensions/instance_state.h"
#include "extensions/interface_tables.h"
#include "extensions/registry.h"

namespace orvane::extensions {

ExtensionState::ExtensionState(std::shared_ptr<HostContext> context, std::filesystem::path library)
    : handle_(Registry::Process().NewHandle()),
      context_(std::move(context)),
      library_(std::move(library)) {}

std::string ExtensionState::Describe() const {
  std::lock_guard<std::mutex> lock(mutex_);
  if (registration_.name.empty()) return library_.string();
  return "extension " + base::JsonText(registration_.name);
}

void ExtensionState::Initialize(XW_Initialize_Func initialize) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    initializing_ = true;
  }
  int32_t result = XW_ERROR;
  const std::optional<std::string> escaped =
      RunCallback(*this, nullptr, [&] { result = initialize(handle_, GetInterface); });
  {
    std::lock_guard<std::mutex> lock(mutex_);
    initializing_ = false;
  }
  if (escaped) {
    throw HostError("XW_Initialize of " + library_.string() + " threw: " + *escaped +
                    ". The library is not used; no exception may leave XW_Initialize.");
  }
  if (result != XW_OK) {
    throw HostError("XW_Initialize of " + library_.string() + " returned " +
                    std::to_string(result) +
                    " instead of XW_OK (0). The library is not used; its own log "
                    "may say what it lacks.");
  }
}

void ExtensionState::Shutdown() {
  for (const auto& instance : Registry::Process().instances()) {
    if (&instance->extension() == this) instance->Destroy();
  }
  if (registration_.shutdown == nullptr) return;
  const std::optional<std::string> escaped =
      RunCallback(*this, nullptr, [this] { registration_.shutdown(handle_); });
  if (escaped) {
    context_->Warn("The shutdown callback of " + Describe() + " threw: " + *escaped +
                   ". No exception may leave a callback.");
  }
}

}  // namespace orvane::extensions
