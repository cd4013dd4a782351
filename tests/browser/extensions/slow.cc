// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// An extension that takes its time over a synchronous message: the text says how many milliseconds.
// Published as example.slow. What it waits for is the last that its process writes.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <XW_Extension.h>
#include <XW_Extension_SyncMessage.h>

namespace {

const XW_Internal_SyncMessagingInterface* g_sync = nullptr;

void Handle(XW_Instance instance, const char* text) {
  std::fprintf(stderr, "slow: waiting for %s ms\n", text);
  std::this_thread::sleep_for(std::chrono::milliseconds(std::atoi(text)));
  g_sync->SetSyncReply(instance, "done");
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  const auto* core = static_cast<const XW_CoreInterface*>(get_interface(XW_CORE_INTERFACE));
  g_sync = static_cast<const XW_Internal_SyncMessagingInterface*>(
      get_interface(XW_INTERNAL_SYNC_MESSAGING_INTERFACE));
  core->SetExtensionName(extension, "example.slow");
  core->SetJavaScriptAPI(extension,
                         "exports.wait = (ms) => extension.internal.sendSyncMessage(String(ms));");
  g_sync->Register(extension, Handle);
  return XW_OK;
}
