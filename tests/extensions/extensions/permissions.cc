// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Registers two permission tables. A synchronous message is an API's name; the reply is the answer
// of the access check.

#include "support.h"

namespace {

Host g_host;
XW_Extension g_extension;

void OnSyncMessage(XW_Instance instance, const char* message) {
  const int answer = g_host.permissions->CheckAPIAccessControl(g_extension, message);
  g_host.sync->SetSyncReply(instance, std::to_string(answer).c_str());
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_extension = extension;
  g_host.core->SetExtensionName(extension, "test.permissions");
  g_host.sync->Register(extension, OnSyncMessage);
  const bool stored = g_host.permissions->RegisterPermissions(extension, "first table") == XW_OK &&
                      g_host.permissions->RegisterPermissions(extension, "second table") == XW_OK;
  return stored ? XW_OK : XW_ERROR;
}
