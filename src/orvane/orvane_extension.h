// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "common/extension.h"

// The extension "dravelt.orvane": hands the runtime its name and its script text, and makes one
// OrvaneInstance for each page context. One per process, owned by the glue from the host's
// initialisation to its shutdown; used on the extension thread alone. Instances may outlive it.
class OrvaneExtension : public common::Extension {
 public:
  // Only while the host initialises the library: otherwise the framework throws std::logic_error
  // for the name.
  OrvaneExtension();
  ~OrvaneExtension() override;

  // Never null. The framework, to which the glue hands the instance, owns it and deletes it with
  // the page context. Throws what the construction throws, and then nothing is left behind.
  common::Instance* CreateInstance() override;
};
