// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XW_Extension.h"
#include "XW_Extension_EntryPoints.h"
#include "XW_Extension_Runtime.h"
#include "XW_Extension_SyncMessage.h"

namespace common {

// The tables of the one host in this process. The host owns them, and they are valid while it hosts
// an extension. Set on the extension thread before any instance exists, not written again for the
// same host's further extensions, and therefore read without a lock from every thread. Partner of
// Extension::XW_Initialize, which asks the host for them by name.
struct HostTables {
  // Without these three no extension is initialised, so that an instance finds them all.
  const XW_CoreInterface* core = nullptr;
  const XW_MessagingInterface* messaging = nullptr;
  const XW_Internal_SyncMessagingInterface* sync_messaging = nullptr;
  // Null on hosts that have no such table.
  const XW_Internal_EntryPointsInterface* entry_points = nullptr;
  const XW_Internal_RuntimeInterface* runtime = nullptr;
};

// Whether both hold the same tables of the same host; what is in the tables is not looked at.
inline bool operator==(const HostTables& a, const HostTables& b) {
  return a.core == b.core && a.messaging == b.messaging && a.sync_messaging == b.sync_messaging &&
         a.entry_points == b.entry_points && a.runtime == b.runtime;
}

// Never written while an instance lives. All null before a host initialised an extension; a second
// host's tables take the place of the first one's.
const HostTables& Host();

}  // namespace common
