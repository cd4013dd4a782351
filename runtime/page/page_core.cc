// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/page_core.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "extensions/extension_host.h"
#include "page/describe_error.h"
#include "page/shared_script.h"
#include "page/unhandled_rejections.h"

namespace orvane::page {

PageCore::PageCore(PageRuntime& runtime, PageOptions options)
    : runtime_(runtime),
      options_(std::move(options)),
      context_(JSGlobalContextCreateInGroup(runtime.group(), nullptr)) {
  StartScripts();
}

PageCore::~PageCore() {
  timers_.Clear();
  waiting_answers_.clear();
  for (const auto& [id, binding] : bindings_) binding->DropListener();
  while (!bindings_.empty()) bindings_.erase(std::prev(bindings_.end()));
  runtime_.rejections().Unwatch(context_);
  JSGlobalContextRelease(context_);
}

void PageCore::StartScripts() {
  NativeObject* const self = this;
  runtime_.rejections().Watch(context_, JSObjectMake(context_, RejectionHandlerClass(), self));
  JSValueRef exception = nullptr;
  const JSValueRef start = runtime_.page_script().Evaluate(context_, &exception);
  if (exception == nullptr) {
    const JSValueRef host = JSObjectMake(context_, NativeClass(), self);
    JSObjectRef function = JSValueToObject(context_, start, nullptr);
    JSObjectCallAsFunction(context_, function, nullptr, 1, &host, &exception);
  }
  if (exception != nullptr) Report(DescribeError(context_, exception, "runtime:page.js"));
}

std::optional<ScriptError> PageCore::Evaluate(const std::string& source, const std::string& file) {
  JSValueRef exception = nullptr;
  const JsString script(source);
  const JsString name(file);
  JSEvaluateScript(context_, script.get(), nullptr, name.get(), 1, &exception);
  if (exception == nullptr) return std::nullopt;
  return DescribeError(context_, exception, file);
}

void PageCore::Call(JSObjectRef function, size_t count, const JSValueRef arguments[]) {
  JSValueRef exception = nullptr;
  JSObjectCallAsFunction(context_, function, nullptr, count, arguments, &exception);
  if (exception != nullptr) Report(DescribeError(context_, exception, {}));
}

void PageCore::Report(const ScriptError& error) const {
  if (options_.errors != nullptr) options_.errors->OnScriptError(error);
}

ExtensionBinding* PageCore::FindBinding(uint64_t id) const {
  const auto found = bindings_.find(id);
  return found == bindings_.end() ? nullptr : found->second.get();
}

bool PageCore::RunUntilIdle(std::chrono::milliseconds limit) {
  Clock& clock = runtime_.clock();
  const Clock::TimePoint end = clock.Now() + limit;
  while (true) {
    const bool ran = RunOneTurn();
    const bool over = clock.Now() >= end;
    if ((over || !ran) && IsIdle()) return true;
    if (over) return false;
    if (!ran) clock.WaitForWork(*work_queue_, std::min(end, timers_.NextDue().value_or(end)));
  }
}

bool PageCore::IsIdle() const {
  return timers_.empty() && waiting_answers_.empty() &&
         std::all_of(bindings_.begin(), bindings_.end(),
                     [](const auto& entry) { return entry.second->pending_replies() == 0; });
}

bool PageCore::RunOneTurn() {
  const std::vector<PageWork> posted = work_queue_->TakeAll();
  for (const PageWork& work : posted) work(*this);
  timers_.BeginTurn(runtime_.clock().Now());
  bool ran = !posted.empty();
  while (const TimerQueue::Handler handler = timers_.TakeDue(runtime_.clock().Now())) {
    handler();
    timers_.EndTimer();
    ran = true;
  }
  return ran;
}

}  // namespace orvane::page
