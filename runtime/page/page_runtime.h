// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <unordered_map>

#include "page/clock.h"

struct OpaqueJSContextGroup;

namespace orvane::extensions {
class Extension;
class ExtensionHost;
}  // namespace orvane::extensions

namespace orvane::page {

class PageCore;
class SharedScript;
class UnhandledRejections;

// What the pages of one application share: the engine's context group, so that a script is compiled
// once for all of them; the runtime's own scripts and the extensions' scripts as the engine's
// strings; the host and the clock.
//
// Owned by whoever owns the pages, outlives them, and borrows the host and the clock. Made, used
// and destroyed on one thread, the page thread, which is the host's extension thread.
class PageRuntime {
 public:
  explicit PageRuntime(extensions::ExtensionHost& host, Clock& clock = Clock::Monotonic());
  ~PageRuntime();

  PageRuntime(const PageRuntime&) = delete;
  PageRuntime& operator=(const PageRuntime&) = delete;

 private:
  friend class ExtensionBinding;
  friend class Page;
  friend class PageCore;

  extensions::ExtensionHost& host() const { return host_; }
  Clock& clock() const { return clock_; }
  const OpaqueJSContextGroup* group() const { return group_; }

  UnhandledRejections& rejections() const { return *rejections_; }

  const SharedScript& page_script() const { return *page_script_; }
  // In its wrapper; made on first use.
  const SharedScript& ScriptOf(const extensions::Extension& extension);

  extensions::ExtensionHost& host_;
  Clock& clock_;
  const OpaqueJSContextGroup* const group_;
  std::unique_ptr<UnhandledRejections> rejections_;
  std::unique_ptr<SharedScript> page_script_;
  std::unordered_map<const extensions::Extension*, std::unique_ptr<SharedScript>>
      extension_scripts_;
};

}  // namespace orvane::page
