// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Calls everything with the handle that a synchronous message names. Its reply says what the calls
// that answer have answered.

#include "support.h"

namespace {

Host g_host;

void Ignore(XW_Instance) {}
void IgnoreText(XW_Instance, const char*) {}
void IgnoreBytes(XW_Instance, const char*, size_t) {}

void CallWithExtensionHandle(XW_Extension handle, std::string* answers) {
  const char* entry_points[] = {"test.invented", nullptr};
  g_host.core->SetExtensionName(handle, "test.invented");
  g_host.core->SetJavaScriptAPI(handle, "");
  g_host.core->RegisterInstanceCallbacks(handle, Ignore, Ignore);
  g_host.core->RegisterShutdownCallback(handle, Ignore);
  g_host.messaging->Register(handle, IgnoreText);
  g_host.messaging->RegisterBinaryMesssageCallback(handle, IgnoreBytes);
  g_host.sync->Register(handle, IgnoreText);
  g_host.entry_points->SetExtraJSEntryPoints(handle, entry_points);
  char value[16] = "untouched";
  g_host.runtime->GetRuntimeVariableString(handle, "app_id", value, sizeof value);
  *answers += std::string(value) + " " +
              std::to_string(g_host.permissions->CheckAPIAccessControl(handle, "api")) + " " +
              std::to_string(g_host.permissions->RegisterPermissions(handle, "table")) + " ";
}

void CallWithInstanceHandle(XW_Instance handle, std::string* answers) {
  int data = 0;
  g_host.core->SetInstanceData(handle, &data);
  *answers += g_host.core->GetInstanceData(handle) == nullptr ? "null" : "data";
  g_host.messaging->PostMessage(handle, "post");
  g_host.messaging->PostBinaryMessage(handle, "post", 4);
  g_host.sync->SetSyncReply(handle, "reply for an invented handle");
}

void OnSyncMessage(XW_Instance instance, const char* message) {
  const XW_Instance handle = std::atoi(message);
  std::string answers;
  CallWithExtensionHandle(handle, &answers);
  CallWithInstanceHandle(handle, &answers);
  g_host.sync->SetSyncReply(instance, answers.c_str());
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.inventedHandles");
  g_host.sync->Register(extension, OnSyncMessage);
  return XW_OK;
}
