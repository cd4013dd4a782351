// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Posts each synchronous message before it replies to it, so that the page can send another one
// meanwhile.

#include "support.h"

namespace {

Host g_host;

void OnSyncMessage(XW_Instance instance, const char* message) {
  g_host.messaging->PostMessage(instance, message);
  g_host.sync->SetSyncReply(instance, ("reply to " + std::string(message)).c_str());
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.nested");
  g_host.sync->Register(extension, OnSyncMessage);
  return XW_OK;
}
