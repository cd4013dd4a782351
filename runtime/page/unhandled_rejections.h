// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <JavaScriptCore/JavaScript.h>

#include "page/native_object.h"

namespace orvane::page {

// Tells of promises that are rejected and that nothing handles. Owned by the PageRuntime of the
// contexts; does nothing with an engine that cannot tell.
//
// The engine keeps a context's handler, and with it the context, for ever. So a context that closes
// hands its handler in: it gets one that belongs to a context which is kept here for that alone.
class UnhandledRejections {
 public:
  explicit UnhandledRejections(JSContextGroupRef group) : group_(group) {}
  ~UnhandledRejections();

  UnhandledRejections(const UnhandledRejections&) = delete;
  UnhandledRejections& operator=(const UnhandledRejections&) = delete;

  // Has `handler` called with each such promise of the context and the reason, once the script and
  // its microtasks have ended. The engine keeps the handler.
  void Watch(JSGlobalContextRef context, JSObjectRef handler);
  // Before the context is released.
  void Unwatch(JSGlobalContextRef context);

 private:
  const JSContextGroupRef group_;
  // Both null until the first context closes.
  JSGlobalContextRef spare_context_ = nullptr;
  ProtectedFunction spare_handler_;
};

}  // namespace orvane::page
