// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "server/pages/page_context.h"
#include "server/records/event_broadcast.h"
#include "server/web/limits.h"
#include "set_process/set_process.h"

namespace orvane::server {

// The application's documents. The loop's thread only.
class PageContexts {
 public:
  using MessageReceiver =
      std::function<void(PageContext& context, std::string_view data, bool is_binary)>;

  // Borrows all of them.
  PageContexts(asio::io_context& loop, set_process::SetProcess& set_process, EventBroadcast& events,
               const Limits& limits, const PageContext::Times& times);

  void set_on_message(MessageReceiver receiver) { on_message_ = std::move(receiver); }

  // For a document that is being sent its script; it counts as a page once something comes from it.
  // Null when there are too many already.
  std::shared_ptr<PageContext> Open(const std::string& href);
  // Null unless there is such a context and the secret is its own.
  std::shared_ptr<PageContext> Find(int64_t id, std::string_view secret) const;
  std::shared_ptr<PageContext> Find(int64_t id) const;
  void Close(PageContext& context);

  // A document that a browser was sent and in which the runtime's script cannot run, with the
  // reason. Nobody tells when it goes: it is listed until another document takes its place.
  void NoteScriptless(const std::string& href, bool is_top, const std::string& problem);
  // The browser loads another top document, or has loaded the context's.
  void ForgetScriptless() { ForgetScriptlessBefore(INT64_MAX); }
  void ForgetScriptlessBefore(int64_t opened_ns);

  // Where keys and text go: the top document that had the focus last, or was loaded last.
  std::shared_ptr<PageContext> Foremost() const;
  void NoteFocus(PageContext& context) { context.set_focus_order(++last_order_); }
  void DeliverToAll(const PageMessage& message);
  // Those that are top documents load again, and take the others with them.
  void Reload();
  // The page has an instance of that extension.
  void NoteInstance(int64_t id, const std::string& extension);
  void ForgetInstances();

  std::vector<ListedPage> List() const;
  void TellChange();  // of anything that List() has

 private:
  asio::io_context& loop_;
  set_process::SetProcess& set_process_;
  EventBroadcast& events_;
  const Limits limits_;
  const PageContext::Times times_;
  MessageReceiver on_message_;
  std::map<int64_t, std::shared_ptr<PageContext>> contexts_;
  std::map<std::string, ListedPage> scriptless_;  // by address
  int64_t last_id_ = 0;
  int64_t last_order_ = 0;
};

}  // namespace orvane::server
