// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Posts each synchronous message back and never replies, save to "reply".

#include <cstring>

#include "support.h"

namespace {

Host g_host;

void OnSyncMessage(XW_Instance instance, const char* message) {
  g_host.messaging->PostMessage(instance, message);
  if (std::strcmp(message, "reply") == 0) g_host.sync->SetSyncReply(instance, "replied");
}

void OnDestroyed(XW_Instance) { Journal("destroyed"); }

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.noReply");
  g_host.core->RegisterInstanceCallbacks(extension, nullptr, OnDestroyed);
  g_host.sync->Register(extension, OnSyncMessage);
  return XW_OK;
}
