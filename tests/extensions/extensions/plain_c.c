// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// An extension in C: the headers need no C++. Answers a synchronous message with its length.

#include <stdio.h>
#include <string.h>

#include "XW_Extension.h"
#include "XW_Extension_SyncMessage.h"

static const XW_Internal_SyncMessagingInterface* g_sync;

static void OnSyncMessage(XW_Instance instance, const char* message) {
  char reply[32];
  snprintf(reply, sizeof reply, "%zu", strlen(message));
  g_sync->SetSyncReply(instance, reply);
}

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  const XW_CoreInterface* core = get_interface(XW_CORE_INTERFACE);
  g_sync = get_interface(XW_INTERNAL_SYNC_MESSAGING_INTERFACE);
  core->SetExtensionName(extension, "test.plainC");
  g_sync->Register(extension, OnSyncMessage);
  return XW_OK;
}
