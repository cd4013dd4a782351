// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>

#include "server/records/event_broadcast.h"
#include "server/simulator/api.h"
#include "server/web/exchange.h"
#include "server/web/origin_check.h"

namespace orvane::server {

// The simulator's origin: its page, and the interface that the page and the command line call. The
// page's files tell nothing; every call needs the run's secret. The loop's thread only.
class SimulatorSite final : public Site {
 public:
  // The bytes and the type of a file of the page; false when there is none.
  using Files = std::function<bool(const std::string& path, std::string* bytes, std::string* type)>;

  // Borrows `api` and `events`.
  SimulatorSite(Origin origin, const Origin& app, std::string secret, Files files, Api& api,
                EventBroadcast& events);

  void Handle(std::shared_ptr<Exchange> exchange) override;

 private:
  void SendFile(const std::shared_ptr<Exchange>& exchange);
  void OpenSocket(const std::shared_ptr<Exchange>& exchange);
  void HandleCall(const std::shared_ptr<Exchange>& exchange);

  const Origin origin_;
  const std::string policy_;
  const std::string secret_;
  const Files files_;
  Api& api_;
  EventBroadcast& events_;
  std::set<std::shared_ptr<SocketListener>> sessions_;
};

}  // namespace orvane::server
