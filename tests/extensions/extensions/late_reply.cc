// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Replies to a synchronous message from another thread: "inside" while its handler runs, anything
// else about when it returns.

#include <cstring>
#include <thread>

#include "support.h"

namespace {

Host g_host;
std::thread g_thread;

void OnSyncMessage(XW_Instance instance, const char* message) {
  if (g_thread.joinable()) g_thread.join();
  g_thread = std::thread([instance, reply = "late " + std::string(message)] {
    g_host.sync->SetSyncReply(instance, reply.c_str());
  });
  if (std::strcmp(message, "inside") == 0) g_thread.join();
}

void OnShutdown(XW_Extension) {
  if (g_thread.joinable()) g_thread.join();
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.lateReply");
  g_host.core->RegisterShutdownCallback(extension, OnShutdown);
  g_host.sync->Register(extension, OnSyncMessage);
  return XW_OK;
}
