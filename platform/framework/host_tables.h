// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XW_Extension.h"
#include "XW_Extension_EntryPoints.h"
#include "XW_Extension_Runtime.h"
#include "XW_Extension_SyncMessage.h"

namespace common {

// The tables of the one host in this process. Set on the extension thread before any instance
// exists, never changed to another host's afterwards, and therefore read without a lock from every
// thread.
struct HostTables {
  const XW_CoreInterface* core = nullptr;
  const XW_MessagingInterface* messaging = nullptr;
  const XW_Internal_SyncMessagingInterface* sync_messaging = nullptr;
  // Null on hosts that have no such table.
  const XW_Internal_EntryPointsInterface* entry_points = nullptr;
  const XW_Internal_RuntimeInterface* runtime = nullptr;

  // The extension whose XW_Initialize runs, or 0.
  XW_Extension initializing = 0;
};

HostTables& Host();

}  // namespace common
