// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/unhandled_rejections.h"

// The engine's library has this function, but the C headers that the distribution ships leave it
// out. As a weak symbol it is simply absent from an engine without it.
extern "C" __attribute__((weak)) void JSGlobalContextSetUnhandledRejectionCallback(
    JSGlobalContextRef context, JSObjectRef function, JSValueRef* exception);

namespace orvane::page {

void WatchUnhandledRejections(JSGlobalContextRef context, JSObjectRef handler) {
  if (JSGlobalContextSetUnhandledRejectionCallback == nullptr) return;
  JSValueRef exception = nullptr;
  JSGlobalContextSetUnhandledRejectionCallback(context, handler, &exception);
}

}  // namespace orvane::page
