// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Replies twice to a synchronous message, and once to a message that is none.

#include "support.h"

namespace {

Host g_host;

void OnSyncMessage(XW_Instance instance, const char*) {
  g_host.sync->SetSyncReply(instance, "first");
  g_host.sync->SetSyncReply(instance, "second");
}

void OnMessage(XW_Instance instance, const char*) {
  g_host.sync->SetSyncReply(instance, "unasked");
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.doubleReply");
  g_host.sync->Register(extension, OnSyncMessage);
  g_host.messaging->Register(extension, OnMessage);
  return XW_OK;
}
