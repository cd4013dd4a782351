// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// A message makes it use the instance that was destroyed last.

#include <thread>

#include "support.h"

namespace {

Host g_host;
XW_Instance g_destroyed = 0;

void OnDestroyed(XW_Instance instance) { g_destroyed = instance; }

void OnMessage(XW_Instance, const char*) {
  const auto post = [] {
    g_host.messaging->PostMessage(g_destroyed, "from the dead");
    g_host.messaging->PostBinaryMessage(g_destroyed, "from the dead", 4);
  };
  post();
  std::thread(post).join();
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.postAfterDestruction");
  g_host.core->RegisterInstanceCallbacks(extension, nullptr, OnDestroyed);
  g_host.messaging->Register(extension, OnMessage);
  return XW_OK;
}
