// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The script that builds the page's object: one line, NUL-terminated. The build makes it from the
// modules of api/ and the device key file (cmake/ScriptText.cmake). The runtime evaluates it in
// strict mode, once for each page, with the variables `extension` and `exports` in scope.
extern const char kSource_orvane_api[];
