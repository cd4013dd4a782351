// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "server/journal.h"
#include "server/key_presses.h"
#include "server/library.h"
#include "server/page_contexts.h"

namespace orvane::server {

// Reads what pages send, has the library process answer it, and writes down what passed. What comes
// from a page is not trusted: a message that is not as it has to be is answered with an error, or
// dropped. The loop's thread only.
class PageMessages {
 public:
  // Gets the frame's members: `"type":"answer","id":…`.
  using Reply = std::function<void(const std::string& members)>;

  // Borrows all of them.
  PageMessages(PageContexts& contexts, Library& library, Journal& journal, KeyPresses& keys)
      : contexts_(contexts), library_(library), journal_(journal), keys_(keys) {}

  // A message of the context's socket, which carries the answer too.
  void HandleSocketMessage(PageContext& context, std::string_view text);
  // A message of a blocking request. `reply` is called once; a post is answered too.
  void HandleRequest(PageContext& context, std::string_view text, const Reply& reply);

  // A message of the library for a page.
  void DeliverPosted(int64_t context, const PostedText& posted);

 private:
  struct Message;

  void HandleReport(PageContext& context, std::string_view type, const JsonObject& message);
  void Dispatch(const Message& message);
  void Ask(const Message& message, std::string_view operation, const std::string& members,
           TraceRecord record);
  void Post(const Message& message);
  void Runtime(const Message& message);
  void Widget(const Message& message);

  PageContexts& contexts_;
  Library& library_;
  Journal& journal_;
  KeyPresses& keys_;
};

}  // namespace orvane::server
