// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "functions/handle_table.h"
#include "tvset/applications.h"

namespace tvset {

// The handles that the platform's functions give out, one table per kind. Shared by the functions
// of a service, which own what is in them on behalf of their caller, and by Set, which counts those
// that are open and ends them all when it stops. Any thread.

// app_context_h: an application as it ran when the context was made. Cleared with the set, so that
// a context of an earlier set is an invalid one.
HandleTable<RunningApplication>& AppContexts();
// pkgmgrinfo_appinfo_h: an application as it was installed when the handle was made. Values handed
// to the caller live as long as the handle.
HandleTable<std::unique_ptr<Application>>& PackageHandles();

}  // namespace tvset
