// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/unhandled_rejections.h"

// The engine's library has this function, but the C headers that the distribution ships leave it
// out. As a weak symbol it is simply absent from an engine without it.
extern "C" __attribute__((weak)) void JSGlobalContextSetUnhandledRejectionCallback(
    JSGlobalContextRef context, JSObjectRef function, JSValueRef* exception);

namespace orvane::page {
namespace {

JSValueRef DoNothing(JSContextRef context, JSObjectRef, JSObjectRef, size_t, const JSValueRef[],
                     JSValueRef*) {
  return JSValueMakeUndefined(context);
}

}  // namespace

UnhandledRejections::~UnhandledRejections() {
  if (spare_context_ == nullptr) return;
  spare_handler_.reset();
  JSGlobalContextRelease(spare_context_);
}

void UnhandledRejections::Watch(JSGlobalContextRef context, JSObjectRef handler) {
  if (JSGlobalContextSetUnhandledRejectionCallback == nullptr) return;
  JSValueRef exception = nullptr;
  JSGlobalContextSetUnhandledRejectionCallback(context, handler, &exception);
}

void UnhandledRejections::Unwatch(JSGlobalContextRef context) {
  if (spare_context_ == nullptr) {
    spare_context_ = JSGlobalContextCreateInGroup(group_, nullptr);
    spare_handler_ = Protect(spare_context_,
                             JSObjectMakeFunctionWithCallback(spare_context_, nullptr, DoNothing));
  }
  Watch(context, spare_handler_.get());
}

}  // namespace orvane::page
