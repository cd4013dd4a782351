// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "page/clock.h"

struct OpaqueJSContextGroup;

namespace orvane::extensions {
class Extension;
class ExtensionHost;
}  // namespace orvane::extensions

namespace orvane::page {

class PageWorkQueue;
class PageCore;
class SharedScript;
class UnhandledRejections;

// What the pages of one application share: the engine's context group, so that a script is compiled
// once for all of them; the runtime's own scripts and the extensions' scripts as the engine's
// strings; and the loop.
//
// Owned by whoever owns the pages, outlives them, and borrows the host and the clock. Made, used
// and destroyed on one thread, the page thread, which is the host's extension thread.
class PageRuntime {
 public:
  explicit PageRuntime(extensions::ExtensionHost& host, Clock& clock = Clock::Monotonic());
  ~PageRuntime();

  PageRuntime(const PageRuntime&) = delete;
  PageRuntime& operator=(const PageRuntime&) = delete;

  // Runs the timers, posted messages and answers of every page until none has anything to wait for:
  // no timer, no message, no reply that is still to come. False when `limit` passed first. A turn
  // that is running is not cut short. Not to be called from within a script.
  bool RunUntilIdle(std::chrono::milliseconds limit);

  size_t page_count() const { return pages_.size(); }

 private:
  friend class ExtensionBinding;
  friend class Page;
  friend class PageCore;

  extensions::ExtensionHost& host() const { return host_; }
  Clock& clock() const { return clock_; }
  const std::shared_ptr<PageWorkQueue>& work_queue() const { return work_queue_; }
  const OpaqueJSContextGroup* group() const { return group_; }

  UnhandledRejections& rejections() const { return *rejections_; }

  uint64_t Add(PageCore* page);
  void Remove(uint64_t page);
  PageCore* Find(uint64_t page) const;

  bool Run(const std::vector<uint64_t>& pages, std::chrono::milliseconds limit);
  bool RunOneTurn(const std::vector<uint64_t>& pages);
  bool IsIdle(const std::vector<uint64_t>& pages) const;
  void SortWork();

  const SharedScript& page_script() const { return *page_script_; }
  const SharedScript& ScriptOf(
      const extensions::Extension& extension);  // in its wrapper; made on first use

  extensions::ExtensionHost& host_;
  Clock& clock_;
  const std::shared_ptr<PageWorkQueue> work_queue_;
  const OpaqueJSContextGroup* const group_;
  std::unique_ptr<UnhandledRejections> rejections_;
  std::unique_ptr<SharedScript> page_script_;
  std::unordered_map<const extensions::Extension*, std::unique_ptr<SharedScript>>
      extension_scripts_;
  uint64_t last_page_ = 0;
  std::unordered_map<uint64_t, PageCore*> pages_;
};

}  // namespace orvane::page
