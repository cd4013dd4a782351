// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The functions of a PageCore that send messages to the web runtime.
#include <stdexcept>
#include <utility>

#include "page/page_core.h"

namespace orvane::page {

RuntimeMessages& PageCore::RequireRuntime() const {
  if (options_.runtime == nullptr)
    throw std::runtime_error("No web runtime answers messages in this page.");
  return *options_.runtime;
}

// (uri, text) -> whether the runtime has done it
JSValueRef PageCore::SendRuntimeMessage(const NativeCall& call) {
  const std::string uri = call.Text(0);
  const std::string text = call.Text(1);
  Trace(TraceDirection::kFromPage, TraceKind::kRuntimePlain, uri, text, {});
  const Clock::TimePoint sent = runtime_.clock().Now();
  const bool done = RequireRuntime().Send(uri, text);
  Trace(TraceDirection::kToPage, TraceKind::kRuntimePlain, uri, done ? "true" : "false", sent);
  return JSValueMakeBoolean(call.context, done);
}

// (uri, text) -> the answer text
JSValueRef PageCore::SendRuntimeSyncMessage(const NativeCall& call) {
  const std::string uri = call.Text(0);
  const std::string text = call.Text(1);
  Trace(TraceDirection::kFromPage, TraceKind::kRuntimeSync, uri, text, {});
  const Clock::TimePoint sent = runtime_.clock().Now();
  const std::string answer = RequireRuntime().SendSync(uri, text);
  Trace(TraceDirection::kToPage, TraceKind::kRuntimeSync, uri, answer, sent);
  return MakeText(call.context, answer);
}

// (uri, text, callback that receives the answer text)
JSValueRef PageCore::SendRuntimeAsyncMessage(const NativeCall& call) {
  const std::string uri = call.Text(0);
  const std::string text = call.Text(1);
  ProtectedFunction callback(context_, call.Function(2, "The callback of a runtime message"));
  RuntimeMessages& messages = RequireRuntime();
  Trace(TraceDirection::kFromPage, TraceKind::kRuntimeAsync, uri, text, {});
  const uint64_t number = ++last_answer_;
  waiting_answers_.emplace(number, WaitingAnswer{uri, std::move(callback), runtime_.clock().Now()});
  try {
    messages.SendAsync(
        uri, text,
        [work_queue = runtime_.work_queue(), page = id_, number](const std::string& answer) {
          work_queue->Post(
              {page, [number, answer](PageCore& core) { core.Answer(number, answer); }});
        });
  } catch (...) {
    waiting_answers_.erase(number);
    throw;
  }
  return JSValueMakeUndefined(call.context);
}

void PageCore::Answer(uint64_t call, const std::string& answer) {
  const auto found = waiting_answers_.find(call);
  if (found == waiting_answers_.end()) return;  // answered before
  const WaitingAnswer waiting = std::move(found->second);
  waiting_answers_.erase(found);
  Trace(TraceDirection::kToPage, TraceKind::kRuntimeAsync, waiting.uri, answer, waiting.sent);
  const JSValueRef text = MakeText(context_, answer);
  Call(waiting.callback.get(), 1, &text);
}

void PageCore::Trace(TraceDirection direction, TraceKind kind, const std::string& uri,
                     const std::string& payload, Clock::TimePoint since) const {
  if (options_.trace == nullptr) return;
  const double microseconds =
      since == Clock::TimePoint{}
          ? 0
          : std::chrono::duration<double, std::micro>(runtime_.clock().Now() - since).count();
  options_.trace->OnTrace({direction, kind, uri, payload, microseconds});
}

}  // namespace orvane::page
