// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Registers every callback as NULL.

#include "support.h"

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  const Host host = GetHost(get_interface);
  host.core->SetExtensionName(extension, "test.nullCallbacks");
  host.core->RegisterInstanceCallbacks(extension, nullptr, nullptr);
  host.core->RegisterShutdownCallback(extension, nullptr);
  host.messaging->Register(extension, nullptr);
  host.messaging->RegisterBinaryMesssageCallback(extension, nullptr);
  host.sync->Register(extension, nullptr);
  return XW_OK;
}
