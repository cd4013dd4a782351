// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <JavaScriptCore/JavaScript.h>

#include "page/extension_binding.h"
#include "page/native_object.h"
#include "page/page.h"
#include "page/page_work_queue.h"
#include "page/timer_queue.h"

namespace orvane::page {

// The inside of a Page: its context, what it waits for, and the functions that the runtime's
// scripts call, which are the `host` of js/main.js. Page thread only; what other threads have for
// it comes through its PageWorkQueue.
class PageCore final : public NativeObject {
 public:
  static JSClassRef NativeClass();            // of `host` in js/main.js
  static JSClassRef RejectionHandlerClass();  // of the function that hears of lost rejections

  PageCore(PageRuntime& runtime, PageOptions options);
  ~PageCore() override;

  PageCore(const PageCore&) = delete;
  PageCore& operator=(const PageCore&) = delete;

  PageRuntime& runtime() const { return runtime_; }
  const PageOptions& options() const { return options_; }
  const std::shared_ptr<PageWorkQueue>& work_queue() const { return work_queue_; }
  JSGlobalContextRef context() const { return context_; }

  std::optional<ScriptError> Evaluate(const std::string& source, const std::string& file);
  bool RunUntilIdle(std::chrono::milliseconds limit);
  void DefineFunction(const std::string& dotted_name, ScriptFunction function);

  // Calls a function of the page; what it throws is reported.
  void Call(JSObjectRef function, size_t count, const JSValueRef arguments[]);
  void Report(const ScriptError& error) const;

  // By number; null when its instance could not be made.
  ExtensionBinding* FindBinding(uint64_t id) const;

  // Runtime messages, for the extensions' scripts.
  JSValueRef SendPlain(const NativeCall& call);
  JSValueRef SendSync(const NativeCall& call);
  JSValueRef SendAsync(const NativeCall& call);

  // Nothing without a sink. `since` is the time that the record's duration counts from, none for 0.
  void Trace(TraceDirection direction, TraceKind kind, std::string_view peer,
             std::string_view payload, Clock::TimePoint since) const;

 private:
  struct WaitingAnswer {
    std::string uri;
    ProtectedFunction callback;
    Clock::TimePoint sent;
  };

  // What `host` in js/main.js does.
  JSValueRef CreateInstance(const NativeCall& call);
  JSValueRef AddTimer(const NativeCall& call);
  JSValueRef RemoveTimer(const NativeCall& call);
  JSValueRef WriteConsole(const NativeCall& call);
  JSValueRef ReportError(const NativeCall& call);
  JSValueRef ReportRejection(const NativeCall& call);
  JSValueRef HasPrivilege(const NativeCall& call);
  JSValueRef MoveWindow(const NativeCall& call);
  JSValueRef SetQuarterPosition(const NativeCall& call);
  JSValueRef Extensions(const NativeCall& call);
  JSValueRef WidgetInfo(const NativeCall& call);

  void StartScripts();
  bool RunOneTurn();  // whether there was anything to run
  bool IsIdle() const;
  RuntimeMessages& RequireRuntime() const;
  template <typename Ask>
  std::string AskRuntime(const NativeCall& call, TraceKind kind, Ask&& ask) const;
  void Answer(uint64_t call, const std::string& answer);

  PageRuntime& runtime_;
  const PageOptions options_;
  const std::shared_ptr<PageWorkQueue> work_queue_ = std::make_shared<PageWorkQueue>();
  OpaqueJSContext* const context_;
  uint64_t last_binding_ = 0;
  std::map<uint64_t, std::unique_ptr<ExtensionBinding>> bindings_;  // by number
  TimerQueue timers_;
  uint64_t last_answer_ = 0;
  std::unordered_map<uint64_t, WaitingAnswer> waiting_answers_;
  std::vector<std::unique_ptr<ScriptFunction>> script_functions_;
};

}  // namespace orvane::page
