// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Asks for interfaces that are none, and is an extension all the same.

#include "support.h"

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  GetHost(get_interface).core->SetExtensionName(extension, "test.unknownInterface");
  for (const char* name : {"XW_CoreInterface_2", "", "xw_coreinterface_1"}) {
    if (get_interface(name) != nullptr) return XW_ERROR;
  }
  return XW_OK;
}
