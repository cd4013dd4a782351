// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Each instance has a thread that posts without a pause, until long after the instance is
// destroyed: until shutdown.

#include <atomic>
#include <thread>
#include <vector>

#include "support.h"

namespace {

Host g_host;
std::atomic<bool> g_stop{false};
std::vector<std::thread> g_threads;

void OnCreated(XW_Instance instance) {
  g_host.core->SetInstanceData(instance, &g_stop);
  g_threads.emplace_back([instance] {
    while (!g_stop.load()) {
      g_host.messaging->PostMessage(instance, "busy");
      g_host.core->GetInstanceData(instance);
      g_host.sync->SetSyncReply(instance, "unasked");
      std::this_thread::yield();
    }
  });
}

void OnShutdown(XW_Extension) {
  g_stop = true;
  for (std::thread& thread : g_threads) thread.join();
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.busyPoster");
  g_host.core->RegisterInstanceCallbacks(extension, OnCreated, nullptr);
  g_host.core->RegisterShutdownCallback(extension, OnShutdown);
  return XW_OK;
}
