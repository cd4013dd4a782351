// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "functions/handle_table.h"
#include "tvset/applications.h"

namespace tvset {

HandleTable<RunningApplication>& AppContexts();
HandleTable<std::unique_ptr<Application>>& PackageHandles();

}  // namespace tvset
