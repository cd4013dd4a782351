// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Sets the name NAME, if there is one, and the entry points ENTRY_POINTS ("a", "b",), and journals
// its loading, shutdown and unloading.

#include "support.h"

namespace {

void OnShutdown(XW_Extension) { Journal("shutdown"); }

__attribute__((constructor)) void OnLoad() { Journal("loaded"); }
__attribute__((destructor)) void OnUnload() { Journal("unloaded"); }

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  const Host host = GetHost(get_interface);
#ifdef NAME
  host.core->SetExtensionName(extension, NAME);
#endif
#ifdef ENTRY_POINTS
  const char* entry_points[] = {ENTRY_POINTS nullptr};
  host.entry_points->SetExtraJSEntryPoints(extension, entry_points);
#endif
  host.core->RegisterShutdownCallback(extension, OnShutdown);
  return XW_OK;
}
