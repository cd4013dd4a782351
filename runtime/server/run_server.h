// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/net.h"
#include "server/application/app_site.h"
#include "server/pages/key_presses.h"
#include "server/pages/page_contexts.h"
#include "server/pages/page_messages.h"
#include "server/pictures/picture_taker.h"
#include "server/records/event_broadcast.h"
#include "server/records/journal.h"
#include "server/run_record.h"
#include "server/simulator/api.h"
#include "server/simulator/run_methods.h"
#include "server/simulator/simulator_site.h"
#include "server/web/http_server.h"
#include "set_process/set_process.h"

namespace orvane::server {

// `orvane run`: serves an application to browsers, with the library behind it and the simulator
// beside it. Owns the set process. Run() and the destructor belong to one thread.
class RunServer final : private set_process::SetProcessListener {
 public:
  explicit RunServer(RunOptions options);
  ~RunServer() override;
  RunServer(const RunServer&) = delete;
  RunServer& operator=(const RunServer&) = delete;

  // Serves until Stop() or until the process is asked to end (SIGINT, SIGTERM); then ends what it
  // started, within a few seconds. Throws std::runtime_error when it cannot serve.
  void Run();

  void Stop();  // from any thread

 private:
  void OnStarted(const Json& started) override;
  void OnStartFailed(const std::string& why) override { Fail(why); }
  void OnPosted(const set_process::Posted& posted) override { messages_.DeliverPosted(posted); }
  void OnEvent(const std::string& name, const Json& data, std::string_view body) override;
  void OnRestarted() override;
  void OnProcessChanged() override { events_.Publish("process", set_process_.Description()); }

  void Open(const Json& started);
  void Fail(const std::string& why);
  void BeginStop();

  RunOptions options_;
  asio::io_context loop_{1};
  asio::signal_set signals_{loop_};
  EventBroadcast events_{loop_};
  set_process::SetProcess set_process_;
  PageContexts contexts_;
  Journal journal_{events_};
  Api api_{set_process_};
  KeyPresses keys_;
  PageMessages messages_{contexts_, set_process_, journal_, keys_};
  HttpServer app_server_;
  HttpServer simulator_server_;

  // From the moment the set process has started.
  std::optional<PageScript> script_;
  std::optional<AppSite> app_site_;
  std::optional<SimulatorSite> simulator_site_;
  std::optional<RunRecord> record_;  // by which the command line finds this run
  PictureTaker pictures_{loop_};
  RunAddresses addresses_;
  RunMethods run_methods_{{options_, addresses_, set_process_, contexts_, pictures_}};
  bool stopping_ = false;
  std::string failure_;
};

}  // namespace orvane::server
