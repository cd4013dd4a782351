// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/run_server.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <optional>
#include <utility>

#include "base/net.h"
#include "base/wall_clock.h"
#include "server/application/app_content.h"
#include "server/application/app_site.h"
#include "server/pages/key_presses.h"
#include "server/pages/page_contexts.h"
#include "server/pages/page_messages.h"
#include "server/pictures/open_in_browser.h"
#include "server/pictures/picture_taker.h"
#include "server/records/event_broadcast.h"
#include "server/records/journal.h"
#include "server/run_record.h"
#include "server/simulator/api.h"
#include "server/simulator/record_methods.h"
#include "server/simulator/run_info.h"
#include "server/simulator/run_methods.h"
#include "server/simulator/simulator_site.h"
#include "server/web/http_server.h"
#include "server/web/origins.h"
#include "server/web/secret.h"
#include "set_process/set_process.h"
#include "simulator/simulator_files.h"

namespace orvane::server {

namespace {

bool FindSimulatorFile(const std::string& path, std::string* bytes, std::string* type) {
  const auto& files = simulator::Files();
  const auto file =
      std::find_if(files.begin(), files.end(),
                   [&path](const simulator::File& candidate) { return candidate.path == path; });
  if (file == files.end()) return false;
  *bytes = file->bytes;
  *type = file->type;
  return true;
}

set_process::SetProcessOptions MakeLibraryOptions(const RunOptions& options) {
  set_process::SetProcessOptions library;
  library.command = options.set_process_command;
  library.start_options = StartOptions(options);
  library.deadline = options.deadline;
  library.patience = options.patience;
  return library;
}

PageContext::Times MakeTimes(const RunOptions& options) {
  PageContext::Times times;
  times.grace = options.context_grace;
  return times;
}

}  // namespace

class RunServer::Runner final : public set_process::SetProcessListener {
 public:
  explicit Runner(RunOptions options)
      : options_(std::move(options)),
        loop_(1),
        signals_(loop_),
        events_(loop_),
        set_process_(loop_, *this, MakeLibraryOptions(options_)),
        contexts_(loop_, set_process_, events_, options_.limits, MakeTimes(options_)),
        journal_(events_),
        api_(set_process_),
        keys_(loop_, set_process_, contexts_, options_.app.id, options_.key_times),
        messages_(contexts_, set_process_, journal_, keys_),
        app_server_(loop_, options_.limits),
        simulator_server_(loop_, options_.limits) {
    contexts_.set_on_message([this](PageContext& context, std::string_view data, bool is_binary) {
      messages_.HandleSocketMessage(context, data, is_binary);
    });
  }

  void Run() {
    std::signal(SIGPIPE, SIG_IGN);
    signals_.add(SIGINT);
    signals_.add(SIGTERM);
    signals_.async_wait([this](beast::error_code error, int) {
      if (!error) BeginStop();
    });
    set_process_.Start();
    loop_.run();
    if (!failure_.empty()) throw RunError(failure_);
  }

  void Stop() {
    asio::post(loop_, [this] { BeginStop(); });
  }

  void OnStarted(const Json& started) override;
  void OnStartFailed(const std::string& why) override { Fail(why); }
  void OnPosted(const set_process::Posted& posted) override { messages_.DeliverPosted(posted); }
  void OnEvent(const std::string& name, const Json& data, std::string_view body) override;
  void OnRestarted() override;
  void OnProcessChanged() override { events_.Publish("process", set_process_.Description()); }

 private:
  void Open(const Json& started);
  void Record(const std::string& api, const std::string& secret);
  void OpenBrowser();
  void Fail(const std::string& why);
  void BeginStop();

  RunOptions options_;
  asio::io_context loop_;
  asio::signal_set signals_;
  EventBroadcast events_;
  set_process::SetProcess set_process_;
  PageContexts contexts_;
  Journal journal_;
  Api api_;
  KeyPresses keys_;
  PageMessages messages_;
  HttpServer app_server_;
  HttpServer simulator_server_;

  // From the moment the set process has started.
  std::optional<PageScript> script_;
  std::optional<AppSite> app_site_;
  std::optional<SimulatorSite> simulator_site_;
  std::optional<AppContent> content_;
  std::optional<RunRecord> record_;
  PictureTaker pictures_{loop_};
  RunAddresses addresses_;
  RunMethods run_methods_{{options_, addresses_, set_process_, contexts_, pictures_}};
  bool stopping_ = false;
  std::string failure_;
};

void RunServer::Runner::OnStarted(const Json& started) {
  try {
    Open(started);
  } catch (const std::exception& error) {
    Fail(error.what());
  }
}

void RunServer::Runner::Open(const Json& started) {
  const std::string secret = MakeSecret();
  const Origins origins = ListenOnLoopback(app_server_, simulator_server_, options_.port);
  addresses_ = {origins.simulator.url() + "/#token=" + secret, origins.app.url()};
  script_.emplace(started, PageAppInfo(options_.app), options_.deadline, options_.check_script);
  app_site_.emplace(origins.app, origins.simulator, AppSite::Parts{contexts_, messages_, *script_},
                    options_);
  content_.emplace(
      options_, origins,
      AppContent::Parts{loop_, *app_site_, contexts_, events_, [this](const std::string& text) {
                          journal_.AddExplanation({{"text", text}});
                        }});
  app_site_->set_content(
      [this](const std::shared_ptr<Exchange>& exchange) { content_->Handle(exchange); });
  simulator_site_.emplace(origins.simulator, origins.app, secret, FindSimulatorFile, api_, events_);
  AddRecordMethods(api_, journal_, AppInfo(options_.app),
                   [this] { return run_methods_.profile(); });
  run_methods_.AddTo(api_, base::NowNs());
  run_methods_.AskProfile();
  Record(origins.simulator.url() + "/api/call", secret);
  app_server_.Serve(*app_site_);
  simulator_server_.Serve(*simulator_site_);
  if (options_.on_ready) options_.on_ready(addresses_);
  OpenBrowser();
}

// Where the command line finds this run.
void RunServer::Runner::Record(const std::string& api, const std::string& secret) {
  record_.emplace(options_.state_folder,
                  RunPlace{addresses_.simulator, api, secret, addresses_.app, getpid()});
}

void RunServer::Runner::OpenBrowser() {
  if (options_.open_browser) server::OpenInBrowser(addresses_.simulator);
  if (!options_.headless_browser) return;
  pictures_.Open(addresses_.simulator, [this](const std::string& why) { Fail(why); });
}

void RunServer::Runner::OnEvent(const std::string& name, const Json& data, std::string_view body) {
  if (name == "log") return journal_.AddLog(body);
  if (name == "explain") return journal_.AddExplanation(data);
  events_.Publish(name, data);
  if (name == "profile") run_methods_.TakeProfile(data);
  if (name == "key") keys_.OnKeyEvent(data);
}

void RunServer::Runner::OnRestarted() {
  contexts_.ForgetInstances();
  contexts_.DeliverToAll({Json{{"type", "restarted"}}, std::nullopt, false});
}

void RunServer::Runner::Fail(const std::string& why) {
  failure_ = why;
  BeginStop();
}

void RunServer::Runner::BeginStop() {
  if (std::exchange(stopping_, true)) return;
  app_server_.Stop();
  simulator_server_.Stop();
  record_.reset();
  if (content_) content_->StopWatching();
  beast::error_code ignored;
  signals_.cancel(ignored);
  set_process_.Stop([this] { loop_.stop(); });
}

RunServer::RunServer(RunOptions options) : runner_(std::make_unique<Runner>(std::move(options))) {}

RunServer::~RunServer() = default;

void RunServer::Run() { runner_->Run(); }

void RunServer::Stop() { runner_->Stop(); }

}  // namespace orvane::server
