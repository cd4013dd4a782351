// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>

#include "extensions/extension_host.h"
#include "page/page.h"
#include "page/page_runtime.h"
#include "television/runtime_services.h"

namespace bench {

// A simulated set with one running application, and a host that has loaded the library: what a page
// of the desktop runtime stands on. The set's state lives in a folder of its own that goes with
// this object.
class World {
 public:
  // Throws std::runtime_error when the library cannot be loaded.
  explicit World(const std::filesystem::path& library);
  ~World();

  World(const World&) = delete;
  World& operator=(const World&) = delete;

  orvane::extensions::Extension& extension() { return *extension_; }
  orvane::page::PageRuntime& pages() { return *pages_; }
  std::unique_ptr<orvane::page::Page> MakePage();

 private:
  const std::filesystem::path folder_;
  std::unique_ptr<orvane::extensions::ExtensionHost> host_;
  std::unique_ptr<orvane::television::RuntimeServices> services_;
  std::unique_ptr<orvane::page::PageRuntime> pages_;
  orvane::extensions::Extension* extension_ = nullptr;
};

}  // namespace bench
