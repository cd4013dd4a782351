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
// Owned by whoever owns the pages, outlives them, and borrows the host and the clock, which outlive
// it. Made, used and destroyed on one thread, the page thread, which is the host's extension
// thread. What it shares is for its pages alone; two pages of it share no object.
class PageRuntime {
 public:
  // `clock` is another one in tests only.
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
  // The engine's JSContextGroupRef.
  const OpaqueJSContextGroup* group() const { return group_; }

  UnhandledRejections& rejections() const { return *rejections_; }

  // What makes the runtime's script side in a page: a function of its host, see js/main.js.
  const SharedScript& page_script() const { return *page_script_; }
  // The extension's script in its wrapper: evaluates to a function of the `xwalk` that it is to
  // see, see js/extension_wrapper.js. Made on first use, and kept: an extension is not loaded
  // twice.
  const SharedScript& ScriptOf(const extensions::Extension& extension);

  extensions::ExtensionHost& host_;
  Clock& clock_;
  const OpaqueJSContextGroup* const group_;
  std::unique_ptr<UnhandledRejections> rejections_;
  std::unique_ptr<SharedScript> page_script_;
  // By extension, which the host keeps.
  std::unordered_map<const extensions::Extension*, std::unique_ptr<SharedScript>>
      extension_scripts_;
};

}  // namespace orvane::page
