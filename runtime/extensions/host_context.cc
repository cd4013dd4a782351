// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/host_context.h"

#include <cstdio>

#include "extensions/host_error.h"

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

void HostContext::BindThread(const char* call) {
  std::thread::id unbound;
  if (thread_.compare_exchange_strong(unbound, std::this_thread::get_id())) return;
  throw HostError(std::string(call) +
                  " was called from another thread than the extension thread, which is the first "
                  "thread that used the host. Hand the call over to that thread.");
}

}  // namespace orvane::extensions
