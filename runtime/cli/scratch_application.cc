// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/scratch_application.h"

#include <filesystem>

namespace orvane::cli {

app::WebApplication ScratchApplication() {
  app::WebApplication application;
  application.id = "OrvaneDesk.Scratch";
  application.package = "OrvaneDesk";
  application.name = "Scratch application";
  application.version = "1.0.0";
  application.privileges = {"http://tizen.org/privilege/tv.inputdevice"};
  application.folder = std::filesystem::current_path();
  return application;
}

}  // namespace orvane::cli
