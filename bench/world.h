// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "compatibility.h"
#include "page/page.h"
#include "page/page_runtime.h"

namespace bench {

// A simulated set with running applications, and a host that has loaded the library for the first
// of them, which has the focus: what a page of the desktop runtime stands on. The set's state lives
// in a folder of its own that goes with this object.
class World {
 public:
  // The applications are OrvaneBnch.App0 to OrvaneBnch.App<applications - 1>. Throws
  // std::runtime_error when the library cannot be loaded.
  World(const std::filesystem::path& library, int applications);
  ~World();

  World(const World&) = delete;
  World& operator=(const World&) = delete;

  extensions::Extension& extension() { return *extension_; }

  std::unique_ptr<orvane::page::Page> MakePage();
  // One whose script has touched `dravelt.orvane`, and so has an instance.
  std::unique_ptr<orvane::page::Page> MakeTouchedPage();

 private:
  const std::filesystem::path folder_;
  std::unique_ptr<extensions::ExtensionHost> host_;
  std::unique_ptr<orvane::page::PageRuntime> pages_;
  extensions::Extension* extension_ = nullptr;
};

}  // namespace bench
