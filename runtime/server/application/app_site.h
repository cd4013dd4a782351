// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "server/pages/page_contexts.h"
#include "server/pages/page_messages.h"
#include "server/pages/page_script.h"
#include "server/simulator/run_options.h"
#include "server/web/exchange.h"
#include "server/web/origin_check.h"

namespace orvane::server {

// The application's origin: its files, and below /.orvane/ what its pages' runtime needs. The
// loop's thread only.
class AppSite final : public Site {
 public:
  // Answers what is not below /.orvane/. `headers` are for the answer.
  using Content = std::function<void(std::shared_ptr<Exchange> exchange)>;

  struct Parts {  // all borrowed
    PageContexts& contexts;
    PageMessages& messages;
    const PageScript& script;
  };

  AppSite(Origin origin, Origin simulator, Parts parts, const RunOptions& options);

  void set_content(Content content) { content_ = std::move(content); }

  void Handle(std::shared_ptr<Exchange> exchange) override;

  // Adds what every answer of the origin says: whether its pages are isolated, and who may frame
  // them.
  void AddHeaders(HttpResponse* response) const;

 private:
  void HandleOwn(const std::shared_ptr<Exchange>& exchange);
  void SendPageScript(const std::shared_ptr<Exchange>& exchange);
  void SendWorkerScript(const std::shared_ptr<Exchange>& exchange);
  void OpenSocket(const std::shared_ptr<Exchange>& exchange);
  void HandleSync(const std::shared_ptr<Exchange>& exchange);
  void HandleBye(const std::shared_ptr<Exchange>& exchange);
  std::shared_ptr<PageContext> FindContext(const HttpRequest& request) const;

  const Origin origin_;
  const Origin simulator_;
  const Parts parts_;
  const std::string start_path_;
  const bool isolate_;
  Content content_;
};

}  // namespace orvane::server
