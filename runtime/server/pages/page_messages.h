// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "server/pages/key_presses.h"
#include "server/pages/page_contexts.h"
#include "server/pages/page_message.h"
#include "server/records/journal.h"
#include "set_process/set_process.h"

namespace orvane::server {

// Reads what pages send, has the set process answer it, and writes down what passed. What comes
// from a page is not trusted: a message that is not as it has to be is answered with an error where
// it has a number, and told to people where it has none. The loop's thread only.
class PageMessages {
 public:
  // Gets the answer. What it borrows lives for the call.
  using Reply = std::function<void(PageMessage answer)>;

  // Borrows all of them.
  PageMessages(PageContexts& contexts, set_process::SetProcess& set_process, Journal& journal,
               KeyPresses& keys)
      : contexts_(contexts), set_process_(set_process), journal_(journal), keys_(keys) {}

  // A message of the context's socket, which carries the answer too.
  void HandleSocketMessage(PageContext& context, std::string_view data, bool is_binary);
  // A message of a blocking request. `reply` is called once; a post is answered too.
  void HandleRequest(PageContext& context, std::string_view data, bool is_binary,
                     const Reply& reply);

  // A message of an extension for a page.
  void DeliverPosted(const set_process::Posted& posted);

 private:
  struct Request;  // a message that has a number
  struct Form {
    const char* type;
    void (PageMessages::*handle)(const Request& request);
  };
  static const Form kForms[];

  void HandleReport(PageContext& context, const Json& report);
  void TakeState(PageContext& context, const Json& report);
  void HandleForm(const Request& request);
  void Sync(const Request& request);
  void Create(const Request& request);
  void AskPrivilege(const Request& request);
  void CallRuntime(const Request& request);
  void CallWidget(const Request& request);
  void Echo(const Request& request);
  void Post(const Request& request);
  void Ask(const Request& request, Json head, std::string_view body, TraceRecord record);
  void Finish(const set_process::Answer& answer, int64_t id, const Reply& reply,
              TraceRecord& record);

  PageContexts& contexts_;
  set_process::SetProcess& set_process_;
  Journal& journal_;
  KeyPresses& keys_;
};

}  // namespace orvane::server
