// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/host_context.h"

#include <cstdio>

#include "extensions/callback_frame.h"
#include "extensions/extension.h"
#include "extensions/host_error.h"
#include "extensions/instance_state.h"
#include "extensions/registry.h"

namespace orvane::extensions {

void HostContext::Warn(const std::string& text) noexcept {
  CallGate::Pass pass(calls_out_);
  if (!pass) return;
  try {
    if (options_.warn) {
      options_.warn(text);
    } else {
      std::fprintf(stderr, "warning: %s\n", text.c_str());
    }
  } catch (...) {
    // Nobody is left to tell.
  }
}

void HostContext::Enter(const char* call) {
  std::thread::id unbound;
  if (!OnExtensionThread() &&
      !thread_.compare_exchange_strong(unbound, std::this_thread::get_id())) {
    throw HostError(std::string(call) +
                    " was called from another thread than the extension thread, which is the first "
                    "thread that used the host. Hand the call over to that thread.");
  }
  if (has_abandoned_instances_.load(std::memory_order_relaxed) &&
      CallbackFrame::innermost() == nullptr) {
    DestroyAbandonedInstances();
  }
}

void HostContext::DestroyAbandonedInstances() {
  has_abandoned_instances_ = false;
  for (const auto& instance : Registry::Process().instances().All()) {
    const bool is_ours = &instance->extension().context() == this;
    if (is_ours && instance->is_abandoned()) instance->Destroy();
  }
}

}  // namespace orvane::extensions
