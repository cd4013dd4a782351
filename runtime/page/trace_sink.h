// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace orvane::page {

enum class TraceDirection { kFromPage, kToPage };

enum class TraceKind {
  kNativeSync,    // a synchronous message to the extension, and its reply
  kNativePost,    // a posted text
  kNativeBinary,  // posted bytes
  kRuntimePlain,  // sendRuntimeMessage, and its result ("true" or "false")
  kRuntimeSync,   // sendRuntimeSyncMessage, and its answer
  kRuntimeAsync,  // sendRuntimeAsyncMessage, and its answer
};

// One message. The views live for the call.
struct TracedMessage {
  TraceDirection direction;
  TraceKind kind;
  std::string_view peer;     // the extension's name, or the URI of a runtime message
  std::string_view payload;  // the bytes themselves for kNativeBinary
  // A reply or answer: since its request was sent. A posted message to the page: how long it waited
  // for the page. Everything that leaves the page: 0.
  double microseconds;
};

// Receives every message of a page, on the page thread; must not run scripts.
class TraceSink {
 public:
  virtual ~TraceSink() = default;
  virtual void OnTrace(const TracedMessage& record) = 0;
};

}  // namespace orvane::page
