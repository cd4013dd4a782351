// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Says XW_ERROR at its end, or throws (with THROWS), after it registered a shutdown callback.

#include <stdexcept>

#include "support.h"

namespace {

XW_Extension g_extension;
Host g_host;

void OnShutdown(XW_Extension) { Journal("shutdown"); }

// The handle is dead by now.
__attribute__((destructor)) void OnUnload() {
  g_host.core->SetExtensionName(g_extension, "test.tooLate");
  Journal("unloaded");
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_extension = extension;
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.initializeFails");
  g_host.core->RegisterShutdownCallback(extension, OnShutdown);
#ifdef THROWS
  throw std::runtime_error("thrown in XW_Initialize");
#else
  return XW_ERROR;
#endif
}
