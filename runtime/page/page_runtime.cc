// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/page_runtime.h"

#include <algorithm>
#include <optional>

#include <JavaScriptCore/JavaScript.h>

#include "extensions/extension.h"
#include "page/describe_error.h"
#include "page/page_core.h"
#include "page/page_work_queue.h"
#include "page/script_files.h"
#include "page/shared_script.h"
#include "page/unhandled_rejections.h"

namespace orvane::page {

PageRuntime::PageRuntime(extensions::ExtensionHost& host, Clock& clock)
    : host_(host),
      clock_(clock),
      work_queue_(std::make_shared<PageWorkQueue>()),
      group_(JSContextGroupCreate()),
      rejections_(std::make_unique<UnhandledRejections>(group_)),
      page_script_(std::make_unique<SharedScript>(group_, kPageScript, "runtime:page.js")) {}

PageRuntime::~PageRuntime() {
  extension_scripts_.clear();
  page_script_.reset();
  rejections_.reset();
  JSContextGroupRelease(group_);
}

bool PageRuntime::RunUntilIdle(std::chrono::milliseconds limit) {
  std::vector<uint64_t> pages;
  for (const auto& [id, page] : pages_) pages.push_back(id);
  std::sort(pages.begin(), pages.end());
  return Run(pages, limit);
}

uint64_t PageRuntime::Add(PageCore* page) {
  pages_.emplace(++last_page_, page);
  return last_page_;
}

void PageRuntime::Remove(uint64_t page) { pages_.erase(page); }

PageCore* PageRuntime::Find(uint64_t page) const {
  const auto found = pages_.find(page);
  return found == pages_.end() ? nullptr : found->second;
}

bool PageRuntime::Run(const std::vector<uint64_t>& pages, std::chrono::milliseconds limit) {
  const Clock::TimePoint end = clock_.Now() + limit;
  while (true) {
    if (RunOneTurn(pages)) {
      if (clock_.Now() >= end) return IsIdle(pages);
      continue;
    }
    if (IsIdle(pages)) return true;
    if (clock_.Now() >= end) return false;
    Clock::TimePoint wake = end;
    for (const uint64_t id : pages) {
      if (const auto due = Find(id)->NextDue()) wake = std::min(wake, *due);
    }
    clock_.WaitForWork(*work_queue_, wake);
  }
}

bool PageRuntime::IsIdle(const std::vector<uint64_t>& pages) const {
  return std::all_of(pages.begin(), pages.end(),
                     [this](uint64_t id) { return Find(id)->IsIdle(); });
}

bool PageRuntime::RunOneTurn(const std::vector<uint64_t>& pages) {
  SortWork();
  bool ran = false;
  for (const uint64_t id : pages) ran = Find(id)->RunOneTurn() || ran;
  return ran;
}

void PageRuntime::SortWork() {
  for (PageWork& work : work_queue_->TakeAll()) {
    if (PageCore* const page = Find(work.page)) page->Receive(std::move(work.work));
  }
}

const SharedScript& PageRuntime::ScriptOf(const extensions::Extension& extension) {
  std::unique_ptr<SharedScript>& script = extension_scripts_[&extension];
  if (script == nullptr) {
    const std::string source = kExtensionWrapperHead + extension.api() + kExtensionWrapperTail;
    script = std::make_unique<SharedScript>(group_, source,
                                            std::string(kExtensionScheme) + extension.name());
  }
  return *script;
}

}  // namespace orvane::page
