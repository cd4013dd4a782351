// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <set>
#include <string>

#include "server/records/event_broadcast.h"
#include "server/simulator/api.h"
#include "server/web/http_connection.h"
#include "server/web/origins.h"

namespace orvane::server {

// The simulator's origin: its page, and the interface that the page and the command line call. The
// page's files tell nothing; every call needs the run's secret. The loop's thread only.
class SimulatorSite final : public Site {
 public:
  // Borrows `api` and `events`.
  SimulatorSite(const Origins& origins, std::string secret, Api& api, EventBroadcast& events);

  void Handle(std::shared_ptr<HttpConnection> connection) override;

 private:
  void SendFile(const std::shared_ptr<HttpConnection>& connection);
  void OpenSocket(const std::shared_ptr<HttpConnection>& connection);
  void HandleCall(const std::shared_ptr<HttpConnection>& connection);

  const Origin origin_;
  const std::string policy_;
  const std::string secret_;
  Api& api_;
  EventBroadcast& events_;
  std::set<std::shared_ptr<SocketListener>> sessions_;
};

}  // namespace orvane::server
