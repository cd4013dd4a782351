// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "common/extension.h"

// The extension "dravelt.orvane": hands the runtime its script text and makes one OrvaneInstance
// for each page context. Owned by the glue; used on the extension thread alone.
class OrvaneExtension : public common::Extension {
 public:
  // Throws what the framework throws when it cannot name the extension or take its script.
  OrvaneExtension();
  ~OrvaneExtension() override;

  // The framework owns what this returns.
  common::Instance* CreateInstance() override;
};
