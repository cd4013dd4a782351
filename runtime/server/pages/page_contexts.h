// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "server/pages/page_context.h"
#include "server/records/event_hub.h"
#include "server/web/limits.h"
#include "set_process/set_process.h"

namespace orvane::server {

// The application's documents. The loop's thread only.
class PageContexts {
 public:
  using MessageReceiver = std::function<void(PageContext& context, std::string_view text)>;

  // Borrows all of them.
  PageContexts(asio::io_context& loop, set_process::SetProcess& set_process, EventHub& hub,
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
  void DeliverToAll(std::string_view members);
  // Those that are top documents load again, and take the others with them.
  void Reload();
  // The page has an instance of that extension, whose name is a JSON string.
  void NoteInstance(int64_t id, std::string_view extension);
  void ForgetInstances();

  std::string Json() const;
  void TellChange();  // of anything that Json() has

 private:
  struct Scriptless {
    int64_t opened_ns = 0;
    std::string json;
  };

  asio::io_context& loop_;
  set_process::SetProcess& set_process_;
  EventHub& hub_;
  const Limits limits_;
  const PageContext::Times times_;
  MessageReceiver on_message_;
  std::map<int64_t, std::shared_ptr<PageContext>> contexts_;
  std::map<std::string, Scriptless> scriptless_;  // by address
  int64_t last_id_ = 0;
  int64_t last_order_ = 0;
};

}  // namespace orvane::server
