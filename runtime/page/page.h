// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "page/console_sink.h"
#include "page/page_runtime.h"
#include "page/runtime_messages.h"
#include "page/script_error.h"
#include "page/trace_sink.h"

struct OpaqueJSContext;

namespace orvane::page {

// What a page is made with. What is pointed to is borrowed and must outlive the page; everything
// may be absent.
struct PageOptions {
  // Absent: runtime messages throw, every privilege is refused.
  RuntimeMessages* runtime = nullptr;
  // Absent: what the page writes is dropped.
  ConsoleSink* console = nullptr;
  // Told of what nothing caught. Absent: dropped.
  ErrorSink* errors = nullptr;
  // Absent: nothing is traced, and messages cost less.
  TraceSink* trace = nullptr;
  // What the page's `widget` object says of the application.
  std::string widget_id, widget_name, widget_version;
};

// Answers a call from a script: takes the arguments as a JSON array, returns the result as JSON, or
// an empty text for undefined. What it throws, the script catches as an Error with its text.
using ScriptFunction = std::function<std::string(const std::string& arguments_json)>;

// One page: a script context with `console`, timers, `xwalk.utils`, `WebAPIException`, `widget`,
// and the extensions of the runtime's host under their names. An extension gets its instance for
// this page, and its script is evaluated, when a script first touches its name or one of its entry
// points.
//
// Belongs to the page thread of its PageRuntime. Not to be destroyed from within one of its
// scripts. Its destruction drops timers, listeners and waiting callbacks, then destroys the
// extensions' instances, the newest first, which may block until they have finished their work,
// then the script context; what they post meanwhile is dropped.
class Page {
 public:
  Page(PageRuntime& runtime, const PageOptions& options);
  ~Page();

  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  // Runs `source` as a script of the page; `file` is its name in error texts. Returns what it
  // threw. The promise callbacks that it makes ready have run when this returns; timers and
  // messages wait for RunUntilIdle.
  std::optional<ScriptError> Evaluate(const std::string& source, const std::string& file);

  // Runs the timers, posted messages and answers of this page until it has nothing to wait for: no
  // timer, no message, no reply that is still to come. False when `limit` passed first. A turn that
  // is running is not cut short; what other pages get meanwhile waits for them. Not to be called
  // from within a script.
  bool RunUntilIdle(std::chrono::milliseconds limit);

  // Gives scripts a function under a dotted name; objects on the way to it are made when they are
  // missing. It is kept as long as the page.
  void DefineFunction(const std::string& dotted_name, ScriptFunction function);

  // The engine's context, a JSGlobalContextRef; lives as long as the page.
  OpaqueJSContext* context() const;

 private:
  const std::unique_ptr<PageCore> core_;
};

}  // namespace orvane::page
