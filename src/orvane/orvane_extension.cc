// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/orvane_extension.h"

#include "common/create_extension.h"
#include "orvane/constants.h"
#include "orvane/orvane_api.h"
#include "orvane/orvane_instance.h"

OrvaneExtension::OrvaneExtension() {
  SetExtensionName("dravelt.orvane");
  SetJavaScriptAPI(kSource_orvane_api);
}

OrvaneExtension::~OrvaneExtension() = default;

common::Instance* OrvaneExtension::CreateInstance() {
  return new extension::orvane::OrvaneInstance();
}

common::Extension* CreateExtension() { return new OrvaneExtension(); }
