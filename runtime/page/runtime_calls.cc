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

// `ask(RuntimeMessages&, uri, text)` gives the answer text.
template <typename Ask>
std::string PageCore::AskRuntime(const NativeCall& call, TraceKind kind, Ask&& ask) const {
  const std::string uri = call.Text(0);
  const std::string text = call.Text(1);
  Trace(TraceDirection::kFromPage, kind, uri, text, {});
  const Clock::TimePoint sent = runtime_.clock().Now();
  std::string answer = ask(RequireRuntime(), uri, text);
  Trace(TraceDirection::kToPage, kind, uri, answer, sent);
  return answer;
}

JSValueRef PageCore::SendPlain(const NativeCall& call) {
  const std::string done = AskRuntime(call, TraceKind::kRuntimePlain,
                                      [](auto& runtime, const auto& uri, const auto& text) {
                                        return runtime.Send(uri, text) ? "true" : "false";
                                      });
  return JSValueMakeBoolean(call.context, done == "true");
}

JSValueRef PageCore::SendSync(const NativeCall& call) {
  return MakeText(call.context, AskRuntime(call, TraceKind::kRuntimeSync,
                                           [](auto& runtime, const auto& uri, const auto& text) {
                                             return runtime.SendSync(uri, text);
                                           }));
}

JSValueRef PageCore::SendAsync(const NativeCall& call) {
  const std::string uri = call.Text(0);
  const std::string text = call.Text(1);
  const ProtectedFunction callback =
      Protect(context_, call.Function(2, "The callback of a runtime message"));
  RuntimeMessages& messages = RequireRuntime();
  Trace(TraceDirection::kFromPage, TraceKind::kRuntimeAsync, uri, text, {});
  const uint64_t number = ++last_answer_;
  waiting_answers_.emplace(number, WaitingAnswer{uri, callback, runtime_.clock().Now()});
  try {
    messages.SendAsync(uri, text, [work_queue = work_queue_, number](const std::string& answer) {
      work_queue->Post([number, answer](PageCore& page) { page.Answer(number, answer); });
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

void PageCore::Trace(TraceDirection direction, TraceKind kind, std::string_view peer,
                     std::string_view payload, Clock::TimePoint since) const {
  if (options_.trace == nullptr) return;
  const double microseconds =
      since == Clock::TimePoint{}
          ? 0
          : std::chrono::duration<double, std::micro>(runtime_.clock().Now() - since).count();
  options_.trace->OnTrace({direction, kind, peer, payload, microseconds});
}

}  // namespace orvane::page
