// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Answers every message with itself: synchronous ones with a reply, text and binary ones with a
// post. Published as test.echo (entry point test.echoAlias) with the functions of echo.js.

#include "support.h"

extern "C" const char kEchoScript[];  // echo.js

namespace {

Host g_host;

void OnSyncMessage(XW_Instance instance, const char* message) {
  g_host.sync->SetSyncReply(instance, message);
}

void OnMessage(XW_Instance instance, const char* message) {
  g_host.messaging->PostMessage(instance, message);
}

void OnBinaryMessage(XW_Instance instance, const char* bytes, size_t size) {
  g_host.messaging->PostBinaryMessage(instance, bytes, size);
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_host.core->SetExtensionName(extension, "test.echo");
  g_host.core->SetJavaScriptAPI(extension, kEchoScript);
  g_host.sync->Register(extension, OnSyncMessage);
  g_host.messaging->Register(extension, OnMessage);
  g_host.messaging->RegisterBinaryMesssageCallback(extension, OnBinaryMessage);
  const char* entry_points[] = {"test.echoAlias", nullptr};
  g_host.entry_points->SetExtraJSEntryPoints(extension, entry_points);
  return XW_OK;
}
