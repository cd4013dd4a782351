// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <type_traits>

#include "XW_Extension.h"
#include "extensions/callback_frame.h"
#include "extensions/extension.h"
#include "extensions/instance_state.h"
#include "extensions/registry.h"
#include "extensions/warnings.h"

// From the handle in a call of the C interface to its state, through the guard. Any thread.

namespace orvane::extensions {

// `body(Extension&)` answers for a living extension; the empty value does for any other handle.
template <typename Body>
auto WithExtension(const char* call, XW_Extension handle, Body&& body) {
  using Result = std::invoke_result_t<Body, Extension&>;
  return GuardCall(call, [&]() -> Result {
    const std::shared_ptr<Extension> extension = Registry::Process().extensions.Find(handle);
    if (extension != nullptr) return body(*extension);
    WarnAboutDeadHandle(HandleKind::kExtension, call, handle);
    return Result();
  });
}

// The same for an instance. An extension nearly always speaks about the instance whose callback
// runs on this thread, and that one is at hand.
template <typename Body>
auto WithInstance(const char* call, XW_Instance handle, Body&& body) {
  using Result = std::invoke_result_t<Body, InstanceState&>;
  return GuardCall(call, [&]() -> Result {
    const CallbackFrame* frame = CallbackFrame::innermost();
    InstanceState* current = frame != nullptr ? frame->instance() : nullptr;
    if (current != nullptr && current->handle() == handle && current->is_alive()) {
      return body(*current);
    }
    const std::shared_ptr<InstanceState> instance = Registry::Process().instances.Find(handle);
    if (instance != nullptr) return body(*instance);
    WarnAboutDeadHandle(HandleKind::kInstance, call, handle);
    return Result();
  });
}

// Changes what the extension says about itself, if its XW_Initialize runs. Whether it did.
template <typename Change>
bool Configure(const char* call, XW_Extension handle, Change&& change) {
  return WithExtension(call, handle, [&](Extension& extension) {
    if (extension.Configure(change)) return true;
    WarnAboutCall(extension, call,
                  "counts only while XW_Initialize runs; the call did nothing. Move it there.");
    return false;
  });
}

}  // namespace orvane::extensions
