// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "common/extension.h"

namespace common {

// What the host calls in this library: the C callbacks around its one extension object, which they
// own. The framework registers them (Extension::XW_Initialize). All run on the extension thread,
// and each logs its scope.
class Extension::Detail {
 public:
  // Creates the extension object. XW_ERROR when there is none afterwards; what its construction
  // throws passes on, and the framework answers the host with an error.
  static int32_t XW_Initialize(XW_Extension extension, XW_GetInterface lookup);

  // Creates the page context's instance and binds it to the host's handle; does nothing without an
  // extension.
  static void OnInstanceCreated(XW_Instance instance);

  // Deletes the extension object; harmless when there is none.
  static void OnShutdown(XW_Extension extension);
};

}  // namespace common
