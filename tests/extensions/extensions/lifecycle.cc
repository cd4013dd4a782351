// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Journals its callbacks and posts in each of them. An instance's data is its number, from 1.

#include "support.h"

namespace {

Host g_host;
intptr_t g_instances = 0;

std::string Number(XW_Instance instance) {
  return std::to_string(reinterpret_cast<intptr_t>(g_host.core->GetInstanceData(instance)));
}

void OnCreated(XW_Instance instance) {
  g_host.core->SetInstanceData(instance, reinterpret_cast<void*>(++g_instances));
  Journal("created " + Number(instance));
  g_host.messaging->PostMessage(instance, "from created");
}

void OnDestroyed(XW_Instance instance) {
  Journal("destroyed " + Number(instance));
  g_host.messaging->PostMessage(instance, "from destroyed");
}

void OnMessage(XW_Instance instance, const char* message) {
  Journal("message " + Number(instance) + " " + message);
}

void OnShutdown(XW_Extension) { Journal("shutdown"); }
__attribute__((destructor)) void OnUnload() { Journal("unloaded"); }

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.lifecycle");
  g_host.core->RegisterInstanceCallbacks(extension, OnCreated, OnDestroyed);
  g_host.core->RegisterShutdownCallback(extension, OnShutdown);
  g_host.messaging->Register(extension, OnMessage);
  return XW_OK;
}
