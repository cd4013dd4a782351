// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Passes NULL wherever the interface takes a pointer.

#include "support.h"

namespace {

Host g_host;

void OnMessage(XW_Instance instance, const char*) {
  g_host.messaging->PostMessage(instance, nullptr);
  g_host.messaging->PostBinaryMessage(instance, nullptr, 1);
  g_host.messaging->PostBinaryMessage(instance, nullptr, 0);  // the only one that is right
}

void OnSyncMessage(XW_Instance instance, const char*) {
  g_host.sync->SetSyncReply(instance, nullptr);
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.nullTexts");
  g_host.messaging->Register(extension, OnMessage);
  g_host.sync->Register(extension, OnSyncMessage);
  const bool has_null_interface = get_interface(nullptr) != nullptr;
  g_host.core->SetExtensionName(extension, nullptr);
  g_host.core->SetJavaScriptAPI(extension, nullptr);
  g_host.entry_points->SetExtraJSEntryPoints(extension, nullptr);
  g_host.runtime->GetRuntimeVariableString(extension, "app_id", nullptr, 8);
  char value[8] = "unset";
  g_host.runtime->GetRuntimeVariableString(extension, nullptr, value, sizeof value);
  const bool refused = g_host.permissions->CheckAPIAccessControl(extension, nullptr) == XW_ERROR &&
                       g_host.permissions->RegisterPermissions(extension, nullptr) == XW_ERROR;
  return !has_null_interface && value[0] == '\0' && refused ? XW_OK : XW_ERROR;
}
