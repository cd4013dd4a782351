// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace orvane::page {

enum class TraceDirection { kFromPage, kToPage };

enum class TraceKind {
  // A synchronous message to the extension, and its reply.
  kNativeSync,
  // A posted text.
  kNativePost,
  // Posted bytes.
  kNativeBinary,
  // sendRuntimeMessage, and its result ("true" or "false").
  kRuntimePlain,
  // sendRuntimeSyncMessage, and its answer.
  kRuntimeSync,
  // sendRuntimeAsyncMessage, and its answer.
  kRuntimeAsync,
};

// One message. The views live for the call.
struct TracedMessage {
  TraceDirection direction;
  TraceKind kind;
  // The extension's name, or the URI of a runtime message.
  std::string_view peer;
  // The text as it was sent; the bytes themselves for kNativeBinary.
  std::string_view payload;
  // A reply or answer: since its request was sent. A posted message to the page: how long it waited
  // for the page. Everything that leaves the page: 0.
  double microseconds;
};

// Receives every message of a page, what leaves it before the other side has it, what comes before
// the script has it. A message whose answer is an exception has no second record. Borrowed by the
// pages whose PageOptions name it. Called on the page thread; must not run scripts.
class TraceSink {
 public:
  virtual ~TraceSink() = default;
  virtual void OnTrace(const TracedMessage& record) = 0;
};

}  // namespace orvane::page
