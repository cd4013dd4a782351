// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// An extension that never finishes its work when a page is closed, published as example.stuck.
#include <unistd.h>

#include <XW_Extension.h>

namespace {

void WaitForEver(XW_Instance) {
  for (;;) pause();
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  const auto* core = static_cast<const XW_CoreInterface*>(get_interface(XW_CORE_INTERFACE));
  core->SetExtensionName(extension, "example.stuck");
  core->SetJavaScriptAPI(extension, "exports.here = true;");
  core->RegisterInstanceCallbacks(extension, nullptr, WaitForEver);
  return XW_OK;
}
