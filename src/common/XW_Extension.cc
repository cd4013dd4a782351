// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "XW_Extension.h"

#include "common/assertion.h"
#include "common/create_extension.h"
#include "common/extension_detail.h"
#include "common/logger.h"

namespace {

// The one extension object of this library: null before its initialisation and after its shutdown.
// Everything here runs on the host's extension thread; therefore nothing guards it.
common::Extension* g_extension = nullptr;

}  // namespace

namespace common {

Extension* GetCurrentExtension() {
  LOG_ASSERT_AT(fixed_line::kNoCurrentExtension, g_extension);
  return g_extension;
}

// An exception passes on to the framework, which answers the host with an error.
int32_t Extension::Detail::XW_Initialize(XW_Extension /*extension*/, XW_GetInterface /*lookup*/) {
  LOG_SCOPE_AT(fixed_line::kInitializeEntry);
  g_extension = CreateExtension();
  if (g_extension == nullptr) {
    PluginLoggerE_AT(fixed_line::kNoExtensionCreated,
                     "Can't initialize extension: CreateExtension() returned NULL.");
    return XW_ERROR;
  }
  PluginLoggerE_AT(fixed_line::kExtensionCreated,
                   "Extension::Detail::XW_Initialize Created Extension - %p",
                   static_cast<void*>(g_extension));
  return XW_OK;
}

void Extension::Detail::OnInstanceCreated(XW_Instance instance) {
  LOG_SCOPE_AT(fixed_line::kInstanceCreatedEntry);
  if (g_extension == nullptr) {
    return;
  }
  Extension::OnInstanceCreated(instance, g_extension->CreateInstance());
}

// A second shutdown, and one before a successful initialisation, find null and only log. An
// exception from the extension's destructor ends the process, since it cannot pass through the
// host.
void Extension::Detail::OnShutdown(XW_Extension /*extension*/) {
  LOG_SCOPE_AT(fixed_line::kShutdownEntry);
  PluginLoggerE_AT(fixed_line::kExtensionDeleted,
                   "Extension::Detail::OnShutdown Delete extension - %p",
                   static_cast<void*>(g_extension));
  delete g_extension;
  g_extension = nullptr;
}

}  // namespace common

extern "C" int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  using common::Extension;
  return Extension::XW_Initialize(extension, get_interface, Extension::Detail::XW_Initialize,
                                  Extension::Detail::OnInstanceCreated,
                                  Extension::Detail::OnShutdown);
}
