// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace orvane::extensions {

// The XW_GetInterface of this host: the tables of the C extension interface, static and valid for
// ever. Null, with a warning, for a name that is not known. Any thread.
//
// The functions in the tables are called by extensions, hostile or careless ones included: from any
// thread, with any handle, also with null. None lets an exception out; what cannot be done is a
// warning that names the call, and the answer is what the C header says for a failure.
const void* GetInterface(const char* interface_name);

}  // namespace orvane::extensions
