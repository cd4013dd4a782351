// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/page_core.h"

#include <algorithm>
#include <utility>

#include "extensions/extension_host.h"
#include "page/describe_error.h"
#include "page/shared_script.h"
#include "page/unhandled_rejections.h"

namespace orvane::page {

PageCore::PageCore(PageRuntime& runtime, PageOptions options)
    : NativeObject(Kind::kPage),
      runtime_(runtime),
      options_(std::move(options)),
      id_(runtime.Add(this)),
      context_(JSGlobalContextCreateInGroup(runtime.group(), nullptr)) {
  StartScripts();
}

PageCore::~PageCore() {
  runtime_.Remove(id_);  // letters find no page from here on
  inbox_.clear();
  timers_.Clear();
  timer_functions_.clear();
  waiting_answers_.clear();
  for (const auto& binding : bindings_) binding->DropListener();
  while (!bindings_.empty()) bindings_.pop_back();
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

std::optional<ScriptError> PageCore::Evaluate(const std::string& source, const std::string& file,
                                              JSValueRef* value) {
  JSValueRef exception = nullptr;
  const JsString script(source);
  const JsString name(file);
  *value = JSEvaluateScript(context_, script.get(), nullptr, name.get(), 1, &exception);
  if (exception == nullptr) return std::nullopt;
  return DescribeError(context_, exception, file);
}

std::vector<ScriptError> PageCore::TakeErrors() { return std::exchange(errors_, {}); }

void PageCore::Call(JSObjectRef function, size_t count, const JSValueRef arguments[]) {
  JSValueRef exception = nullptr;
  JSObjectCallAsFunction(context_, function, nullptr, count, arguments, &exception);
  if (exception != nullptr) Report(DescribeError(context_, exception, {}));
}

void PageCore::Report(ScriptError error) {
  if (options_.errors != nullptr) {
    options_.errors->OnScriptError(error);
  } else {
    errors_.push_back(std::move(error));
  }
}

ExtensionBinding* PageCore::FindBinding(uint64_t binding) const {
  const auto found =
      std::find_if(bindings_.begin(), bindings_.end(),
                   [binding](const auto& candidate) { return candidate->id() == binding; });
  return found == bindings_.end() ? nullptr : found->get();
}

bool PageCore::IsIdle() const {
  return inbox_.empty() && timers_.empty() && waiting_answers_.empty() &&
         std::all_of(bindings_.begin(), bindings_.end(),
                     [](const auto& binding) { return binding->pending_replies() == 0; });
}

bool PageCore::RunOneTurn() {
  auto work = std::exchange(inbox_, {});
  for (const auto& letter : work) letter(*this);
  timers_.BeginTurn(runtime_.clock().Now());
  bool ran = !work.empty();
  while (const std::optional<int32_t> timer = timers_.TakeDue(runtime_.clock().Now())) {
    RunTimer(*timer);
    ran = true;
  }
  return ran;
}

void PageCore::RunTimer(int32_t timer) {
  const auto found = timer_functions_.find(timer);
  if (timers_.contains(timer)) {
    // An interval may clear itself, so its function is held by the engine's stack alone while it
    // runs.
    Call(found->second.get(), 0, nullptr);
  } else {
    const ProtectedFunction function = std::move(found->second);
    timer_functions_.erase(found);
    Call(function.get(), 0, nullptr);
  }
  timers_.EndTimer();
}

}  // namespace orvane::page
