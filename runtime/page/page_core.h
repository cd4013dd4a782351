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
// scripts call, which are the `host` of js/main.js. Owned by its Page; owns the bindings of the
// extensions that the page has touched. Page thread only; what other threads have for it comes
// through its PageWorkQueue.
//
// Whatever runs script may lead back here: a call of a function of the page may create instances,
// set timers and send messages before it returns. It cannot destroy the page.
class PageCore final : public NativeObject {
 public:
  // Of `host` in js/main.js.
  static JSClassRef NativeClass();
  // Of the function that hears of lost rejections.
  static JSClassRef RejectionHandlerClass();

  // Runs the runtime's own script; what that throws is reported. Page's destructor says in which
  // order things end.
  PageCore(PageRuntime& runtime, PageOptions options);
  ~PageCore() override;

  PageCore(const PageCore&) = delete;
  PageCore& operator=(const PageCore&) = delete;

  PageRuntime& runtime() const { return runtime_; }
  const PageOptions& options() const { return options_; }
  // For whoever has something for the page later, from any thread: the queue may be kept beyond the
  // page's end.
  const std::shared_ptr<PageWorkQueue>& work_queue() const { return work_queue_; }
  JSGlobalContextRef context() const { return context_; }

  // The three as in Page.
  std::optional<ScriptError> Evaluate(const std::string& source, const std::string& file);
  bool RunUntilIdle(std::chrono::milliseconds limit);
  void DefineFunction(const std::string& dotted_name, ScriptFunction function);

  // Calls a function of the page, as a timer or a message does; what it throws is reported. The
  // promise callbacks that it made ready have run when this returns.
  void Call(JSObjectRef function, size_t count, const JSValueRef arguments[]);
  // To PageOptions::errors.
  void Report(const ScriptError& error) const;

  // By number. Null while its instance is being made, and when that failed.
  ExtensionBinding* FindBinding(uint64_t id) const;

  // Runtime messages, for the extensions' scripts. Each throws std::runtime_error in a page without
  // PageOptions::runtime.
  // (uri, text) -> whether the runtime has done it
  JSValueRef SendPlain(const NativeCall& call);
  // (uri, text) -> the answer text
  JSValueRef SendSync(const NativeCall& call);
  // (uri, text, callback that receives the answer text)
  JSValueRef SendAsync(const NativeCall& call);

  // Nothing without a sink. `since` is the time that the record's duration counts from, none for 0.
  void Trace(TraceDirection direction, TraceKind kind, std::string_view peer,
             std::string_view payload, Clock::TimePoint since) const;

 private:
  // A runtime message whose answer is to come; its callback is called once.
  struct WaitingAnswer {
    std::string uri;
    ProtectedFunction callback;
    Clock::TimePoint sent;
  };

  // What `host` in js/main.js does; the names there begin with a small letter.
  // () -> what a page may touch: [{ name, entryPoints }]
  JSValueRef Extensions(const NativeCall& call);
  // (name) -> the native side of the script's `extension` object; null when the library does not
  // load, which the host has warned of.
  JSValueRef CreateInstance(const NativeCall& call);
  // (uri) -> whether the application declares it. false without PageOptions::runtime.
  JSValueRef HasPrivilege(const NativeCall& call);
  // (x, y) and (position) -> "success", or what is wrong. See RuntimeMessages.
  JSValueRef MoveWindow(const NativeCall& call);
  JSValueRef SetQuarterPosition(const NativeCall& call);
  // () -> { id, name, version }
  JSValueRef WidgetInfo(const NativeCall& call);
  // (function, delay in ms, repeats) -> the timer's number
  JSValueRef AddTimer(const NativeCall& call);
  // (the timer's number)
  JSValueRef RemoveTimer(const NativeCall& call);
  // (level, text): the level is a ConsoleLevel's number, the nearest one for any other.
  JSValueRef WriteConsole(const NativeCall& call);
  // (what was thrown)
  JSValueRef ReportError(const NativeCall& call);
  // (the promise, what it was rejected with): called by the engine itself.
  JSValueRef ReportRejection(const NativeCall& call);

  void StartScripts();
  // Does what was posted before, then runs the timers that are due. Whether there was anything.
  bool RunOneTurn();
  // Nothing to wait for: no timer, no answer, no reply.
  bool IsIdle() const;
  // Throws std::runtime_error when there is none.
  RuntimeMessages& RequireRuntime() const;
  template <typename Ask>
  std::string AskRuntime(const NativeCall& call, TraceKind kind, Ask&& ask) const;
  // Calls the callback of the message with this number, unless it was answered before.
  void Answer(uint64_t call, const std::string& answer);

  PageRuntime& runtime_;
  const PageOptions options_;
  const std::shared_ptr<PageWorkQueue> work_queue_ = std::make_shared<PageWorkQueue>();
  OpaqueJSContext* const context_;
  uint64_t last_binding_ = 0;
  // By number, which is the order in which they were made; they end in the reverse one.
  std::map<uint64_t, std::unique_ptr<ExtensionBinding>> bindings_;
  TimerQueue timers_;
  uint64_t last_answer_ = 0;
  // By number.
  std::unordered_map<uint64_t, WaitingAnswer> waiting_answers_;
  // Where each stays is known to the engine's object for it.
  std::vector<std::unique_ptr<ScriptFunction>> script_functions_;
};

}  // namespace orvane::page
