// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// An extension that sends back what it gets, published as example.echo.
#include <string>

#include <XW_Extension.h>
#include <XW_Extension_SyncMessage.h>

namespace {

const XW_Internal_SyncMessagingInterface* g_sync = nullptr;

void Answer(XW_Instance instance, const char* message) {
  g_sync->SetSyncReply(instance, (std::string("echo of ") + message).c_str());
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  const auto* core = static_cast<const XW_CoreInterface*>(get_interface(XW_CORE_INTERFACE));
  g_sync = static_cast<const XW_Internal_SyncMessagingInterface*>(
      get_interface(XW_INTERNAL_SYNC_MESSAGING_INTERFACE));
  core->SetExtensionName(extension, "example.echo");
  core->SetJavaScriptAPI(extension,
                         "exports.say = (text) => extension.internal.sendSyncMessage(text);");
  g_sync->Register(extension, Answer);
  return XW_OK;
}
