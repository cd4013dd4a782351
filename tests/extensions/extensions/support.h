// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the test extensions share. Included by one source of each library.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "XW_Extension.h"
#include "XW_Extension_EntryPoints.h"
#include "XW_Extension_Message_2.h"
#include "XW_Extension_Permissions.h"
#include "XW_Extension_Runtime.h"
#include "XW_Extension_SyncMessage.h"

namespace {

// The host's tables, all of them.
struct Host {
  const XW_CoreInterface* core;
  const XW_MessagingInterface_2* messaging;
  const XW_Internal_SyncMessagingInterface* sync;
  const XW_Internal_EntryPointsInterface* entry_points;
  const XW_Internal_RuntimeInterface* runtime;
  const XW_Internal_PermissionsInterface* permissions;
};

[[maybe_unused]] Host GetHost(XW_GetInterface get) {
  return {
      static_cast<const XW_CoreInterface*>(get(XW_CORE_INTERFACE)),
      static_cast<const XW_MessagingInterface_2*>(get(XW_MESSAGING_INTERFACE_2)),
      static_cast<const XW_Internal_SyncMessagingInterface*>(
          get(XW_INTERNAL_SYNC_MESSAGING_INTERFACE)),
      static_cast<const XW_Internal_EntryPointsInterface*>(get(XW_INTERNAL_ENTRY_POINTS_INTERFACE)),
      static_cast<const XW_Internal_RuntimeInterface*>(get(XW_INTERNAL_RUNTIME_INTERFACE)),
      static_cast<const XW_Internal_PermissionsInterface*>(get(XW_INTERNAL_PERMISSIONS_INTERFACE))};
}

// Appends a line to the test's journal, which outlives the library.
[[maybe_unused]] void Journal(const std::string& line) {
  const char* path = std::getenv("ORVANE_TEST_JOURNAL");
  if (path == nullptr) return;
  std::FILE* file = std::fopen(path, "a");
  if (file == nullptr) return;
  std::fputs((line + "\n").c_str(), file);
  std::fclose(file);
}

}  // namespace
