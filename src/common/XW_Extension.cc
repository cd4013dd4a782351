// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "XW_Extension.h"

#include "common/create_extension.h"
#include "common/extension_detail.h"
#include "common/logger.h"

namespace {

// The one extension object of this library: null before its initialisation and after its shutdown.
common::Extension* g_extension = nullptr;
void* Address() { return g_extension; }

}  // namespace

namespace common {

Extension* GetCurrentExtension() {
  LOG_ASSERT(g_extension);
  return g_extension;
}

// The callbacks below, and everything that they call, run on the host's extension thread; therefore
// nothing guards g_extension.
//
// Creation and deletion of the extension are logged as errors on purpose: they are rare, and the
// first thing to look for when a page lacks its object.
//
// The lines that are logged here have fixed places: see common/logger.h.
//
// The initialisation fails only when no extension was made. An exception passes on to the
// framework, which answers the host with an error.

int32_t Extension::Detail::XW_Initialize(XW_Extension /*extension*/, XW_GetInterface /*lookup*/) {
  LOG_SCOPE();
  g_extension = CreateExtension();
  if (g_extension == nullptr) {
    PluginLoggerE("Can't initialize extension: CreateExtension() returned NULL.");
    return XW_ERROR;
  }
  PluginLoggerE("Extension::Detail::XW_Initialize Created Extension - %p", Address());
  return XW_OK;
}

void Extension::Detail::OnInstanceCreated(XW_Instance instance) {
  LOG_SCOPE();
  if (g_extension == nullptr) {
    return;
  }
  Extension::OnInstanceCreated(instance, g_extension->CreateInstance());
}

// A second shutdown, and one before a successful initialisation, find null and only log.
// An exception from the extension's destructor ends the process, since it cannot pass through the
// host.

void Extension::Detail::OnShutdown(XW_Extension /*extension*/) {
  LOG_SCOPE();
  PluginLoggerE("Extension::Detail::OnShutdown Delete extension - %p", Address());
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
