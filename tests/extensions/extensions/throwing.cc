// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Throws in every callback; in the created one only with THROWS_IN_CREATED.

#include <stdexcept>

#include "support.h"

namespace {

Host g_host;

[[maybe_unused]] void OnCreated(XW_Instance) { throw std::runtime_error("thrown in created"); }
void OnDestroyed(XW_Instance) {
  Journal("destroyed");
  throw std::runtime_error("thrown in destroyed");
}
void OnShutdown(XW_Extension) { throw 1; }
void OnMessage(XW_Instance, const char*) { throw std::runtime_error("thrown in a handler"); }
void OnBinaryMessage(XW_Instance, const char*, size_t) {
  throw std::runtime_error("thrown in a binary handler");
}
void OnSyncMessage(XW_Instance, const char*) {
  throw std::runtime_error("thrown in a synchronous handler");
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.throwing");
#ifdef THROWS_IN_CREATED
  g_host.core->RegisterInstanceCallbacks(extension, OnCreated, OnDestroyed);
#else
  g_host.core->RegisterInstanceCallbacks(extension, nullptr, OnDestroyed);
#endif
  g_host.core->RegisterShutdownCallback(extension, OnShutdown);
  g_host.messaging->Register(extension, OnMessage);
  g_host.messaging->RegisterBinaryMesssageCallback(extension, OnBinaryMessage);
  g_host.sync->Register(extension, OnSyncMessage);
  return XW_OK;
}
