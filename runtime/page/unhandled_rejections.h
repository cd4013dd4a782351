// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <JavaScriptCore/JavaScript.h>

namespace orvane::page {

// Has `handler` called with each promise of the context that was rejected and its reason, when
// nothing handles the rejection by the time the script and its microtasks have ended. Does nothing
// with an engine that cannot tell.
void WatchUnhandledRejections(JSGlobalContextRef context, JSObjectRef handler);

}  // namespace orvane::page
