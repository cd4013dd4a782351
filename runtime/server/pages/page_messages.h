// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "server/pages/key_presses.h"
#include "server/pages/page_contexts.h"
#include "server/records/journal.h"
#include "set_process/set_process.h"

namespace orvane::server {

// Reads what pages send, has the set process answer it, and writes down what passed. What comes
// from a page is not trusted: a message that is not as it has to be is answered with an error, or
// dropped. The loop's thread only.
class PageMessages {
 public:
  // Gets the frame's members: `"type":"answer","id":…`.
  using Reply = std::function<void(const std::string& members)>;

  // Borrows all of them.
  PageMessages(PageContexts& contexts, set_process::SetProcess& set_process, Journal& journal,
               KeyPresses& keys)
      : contexts_(contexts), set_process_(set_process), journal_(journal), keys_(keys) {}

  // A message of the context's socket, which carries the answer too.
  void HandleSocketMessage(PageContext& context, std::string_view text);
  // A message of a blocking request. `reply` is called once; a post is answered too.
  void HandleRequest(PageContext& context, std::string_view text, const Reply& reply);

  // A message of the library for a page.
  void DeliverPosted(const set_process::Posted& posted);

 private:
  struct Message;

  void HandleReport(PageContext& context, std::string_view type, const base::JsonObject& message);
  void Dispatch(const Message& message);
  void Ask(const Message& message, Json head, const std::string& body, TraceRecord record);
  void Post(const Message& message);
  void Runtime(const Message& message);
  void Widget(const Message& message);

  PageContexts& contexts_;
  set_process::SetProcess& set_process_;
  Journal& journal_;
  KeyPresses& keys_;
};

}  // namespace orvane::server
