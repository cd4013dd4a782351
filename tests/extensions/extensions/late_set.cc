// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// A synchronous message makes it call everything that counts in XW_Initialize only.

#include "support.h"

namespace {

Host g_host;
XW_Extension g_extension;

void OtherInstanceCallback(XW_Instance) { Journal("late instance callback"); }
void OtherShutdown(XW_Extension) { Journal("late shutdown"); }
void OtherHandler(XW_Instance, const char*) { Journal("late handler"); }
void OtherBinaryHandler(XW_Instance, const char*, size_t) { Journal("late binary handler"); }

void OnSyncMessage(XW_Instance instance, const char*) {
  const char* entry_points[] = {"test.late.entryPoint", nullptr};
  g_host.core->SetExtensionName(g_extension, "test.late");
  g_host.core->SetJavaScriptAPI(g_extension, "late script");
  g_host.core->RegisterInstanceCallbacks(g_extension, OtherInstanceCallback, OtherInstanceCallback);
  g_host.core->RegisterShutdownCallback(g_extension, OtherShutdown);
  g_host.messaging->Register(g_extension, OtherHandler);
  g_host.messaging->RegisterBinaryMesssageCallback(g_extension, OtherBinaryHandler);
  g_host.sync->Register(g_extension, OtherHandler);
  g_host.entry_points->SetExtraJSEntryPoints(g_extension, entry_points);
  const int stored = g_host.permissions->RegisterPermissions(g_extension, "late table");
  g_host.sync->SetSyncReply(instance, std::to_string(stored).c_str());
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_extension = extension;
  g_host.core->SetExtensionName(extension, "test.lateSet");
  g_host.core->SetJavaScriptAPI(extension, "early script");
  g_host.sync->Register(extension, OnSyncMessage);
  return XW_OK;
}
