// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "server/event_hub.h"
#include "server/library.h"
#include "server/limits.h"
#include "server/page_context.h"

namespace orvane::server {

// The application's documents. The loop's thread only.
class PageContexts {
 public:
  using MessageReceiver = std::function<void(PageContext& context, std::string_view text)>;

  // Borrows all of them.
  PageContexts(asio::io_context& loop, Library& library, EventHub& hub, const Limits& limits,
               const PageContext::Times& times);

  void set_on_message(MessageReceiver receiver) { on_message_ = std::move(receiver); }

  // Null when there are too many already.
  std::shared_ptr<PageContext> Open(const std::string& href);
  // Null unless there is such a context and the secret is its own.
  std::shared_ptr<PageContext> Find(int64_t id, std::string_view secret) const;
  std::shared_ptr<PageContext> Find(int64_t id) const;
  void Close(PageContext& context);

  // Where keys and text go: the top document that had the focus last, or was loaded last.
  std::shared_ptr<PageContext> Foremost() const;
  void NoteFocus(PageContext& context) { context.set_focus_order(++last_order_); }
  void DeliverToAll(std::string_view members);
  // Those that are top documents load again, and take the others with them.
  void Reload();
  // The page has an instance of that extension, whose name is a JSON string.
  void NoteInstance(int64_t id, std::string_view extension);
  void ForgetInstances();

  std::string Json() const;
  void TellChange();  // of anything that Json() has

 private:
  asio::io_context& loop_;
  Library& library_;
  EventHub& hub_;
  const size_t most_contexts_;
  const size_t most_queued_bytes_;
  const PageContext::Times times_;
  MessageReceiver on_message_;
  std::map<int64_t, std::shared_ptr<PageContext>> contexts_;
  int64_t last_id_ = 0;
  int64_t last_order_ = 0;
};

}  // namespace orvane::server
