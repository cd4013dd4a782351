// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace orvane::extensions {

// The XW_GetInterface of this host: the tables of the C extension interface, static and valid for
// ever. Null, with a warning, for a name that is not known. Any thread.
const void* GetInterface(const char* interface_name);

}  // namespace orvane::extensions
